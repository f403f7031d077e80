#include "TreesPage.h"

#include "GalleryActivity.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQItemViews.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace QtUIBase;

TreesPage::TreesPage(QWidget* parent)
    : QWidget(parent)
{
    AQObjects::add(this, QStringLiteral("Trees"));
    auto* activity = new GalleryActivity(this);

    auto* project = new AQTreeWidget(QStringLiteral("projectTree"), this, true);
    project->setHeaderLabels({tr("Item"), tr("Value")});
    const QList<QStringList> branches{{tr("Components"), tr("Patch"), tr("Substrate"), tr("Ground")},
                                      {tr("Ports"), tr("Port 1"), tr("Port 2")},
                                      {tr("Monitors"), tr("Far field"), tr("E-field")}};
    for (const QStringList& branch : branches) {
        auto* top = new QTreeWidgetItem(project, {branch.first()});
        for (int i = 1; i < branch.size(); ++i) {
            auto* child = new QTreeWidgetItem(top, {branch.at(i), QString::number(i)});
            if (branch.first() != tr("Components"))
                child->setCheckState(0, i == 1 ? Qt::Checked : Qt::Unchecked);
        }
    }
    project->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    connect(project, &AQTreeWidget::AItemExpanded, this,
            [activity](QTreeWidgetItem* item) { activity->add(tr("Opened %1").arg(item->text(0))); });
    connect(project, &AQTreeWidget::AItemChanged, this, [activity](QTreeWidgetItem* item, int) {
        activity->add(tr("%1 %2").arg(item->text(0), item->checkState(0) == Qt::Checked ? tr("on") : tr("off")));
    });

    auto* results = new AQTreeView(QStringLiteral("resultsTree"), this, true);
    auto* model = new QStandardItemModel(results);
    model->setHorizontalHeaderLabels({tr("Result")});
    for (const QStringList& branch : {QStringList{tr("S-parameters"), tr("S11"), tr("S21")},
                                      QStringList{tr("Fields"), tr("E-field at 5.8 GHz"), tr("H-field at 5.8 GHz")}}) {
        auto* top = new QStandardItem(branch.first());
        for (int i = 1; i < branch.size(); ++i)
            top->appendRow(new QStandardItem(branch.at(i)));
        model->appendRow(top);
    }
    results->setModel(model);
    connect(results, &AQTreeView::ACurrentChanged, this, [activity](const QModelIndex& index) {
        if (index.isValid())
            activity->add(tr("Result: %1").arg(index.data().toString()));
    });

    auto* trees = new QVBoxLayout;
    trees->addWidget(new QLabel(tr("Project:")));
    trees->addWidget(project, 3);
    trees->addWidget(new QLabel(tr("Results:")));
    trees->addWidget(results, 2);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(trees, 3);
    layout->addWidget(activity, 2);
}

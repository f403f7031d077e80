#include "ListsPage.h"

#include "GalleryActivity.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQItemViews.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace QtUIBase;

ListsPage::ListsPage(QWidget* parent)
    : QWidget(parent)
{
    AQObjects::add(this, QStringLiteral("Lists"));
    auto* activity = new GalleryActivity(this);

    auto* materials = new AQListView(QStringLiteral("materialsView"), this, true);
    auto* model = new QStandardItemModel(materials);
    for (const QString& name : {tr("Copper"), tr("FR-4"), tr("Rogers 4003"), tr("Air")}) {
        auto* item = new QStandardItem(name);
        item->setCheckable(true);
        item->setCheckState(name == tr("Air") ? Qt::Checked : Qt::Unchecked);
        model->appendRow(item);
    }
    materials->setModel(model);
    materials->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(materials, &AQListView::AClicked, this,
            [activity](const QModelIndex& index) { activity->add(tr("Material: %1").arg(index.data().toString())); });
    connect(materials, &AQListView::ADataChanged, this, [activity](const QModelIndex& index) {
        const bool used = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        activity->add(tr("%1 %2").arg(index.data().toString(), used ? tr("used") : tr("not used")));
    });

    auto* layers = new AQListWidget(QStringLiteral("layersList"), this, true);
    layers->addItems({tr("Top copper"), tr("Substrate"), tr("Ground plane")});
    for (int row = 0; row < layers->count(); ++row)
        layers->item(row)->setFlags(layers->item(row)->flags() | Qt::ItemIsEditable);
    connect(layers, &AQListWidget::AItemClicked, this,
            [activity](QListWidgetItem* item) { activity->add(tr("Layer: %1").arg(item->text())); });
    connect(layers, &AQListWidget::AItemChanged, this,
            [activity](QListWidgetItem* item) { activity->add(tr("Layer renamed: %1").arg(item->text())); });

    auto* lists = new QVBoxLayout;
    lists->addWidget(new QLabel(tr("Materials (check the ones the model uses):")));
    lists->addWidget(materials);
    lists->addWidget(new QLabel(tr("Layers (double-click to rename):")));
    lists->addWidget(layers);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(lists, 3);
    layout->addWidget(activity, 2);
}

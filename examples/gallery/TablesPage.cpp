#include "TablesPage.h"

#include "GalleryActivity.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQItemViews.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <cmath>

using namespace QtUIBase;

TablesPage::TablesPage(QWidget* parent)
    : QWidget(parent)
{
    AQObjects::add(this, QStringLiteral("Tables"));
    auto* activity = new GalleryActivity(this);

    auto* ports = new AQTableWidget(QStringLiteral("portsTable"), 3, 3, this, true);
    ports->setHorizontalHeaderLabels({tr("Port"), tr("Impedance"), tr("Active")});
    for (int row = 0; row < 3; ++row) {
        ports->setItem(row, 0, new QTableWidgetItem(tr("Port %1").arg(row + 1)));
        ports->setItem(row, 1, new QTableWidgetItem(QStringLiteral("50")));
        auto* active = new QTableWidgetItem(tr("active"));
        active->setCheckState(row == 0 ? Qt::Checked : Qt::Unchecked);
        ports->setItem(row, 2, active);
    }
    ports->horizontalHeader()->setStretchLastSection(true);
    // The click reports the check state; the table keeps it.
    connect(ports, &AQTableWidget::ACellClicked, this, [ports, activity](int row, int column, int state) {
        if (column == 2)
            ports->item(row, column)->setCheckState(Qt::CheckState(state));
        activity->add(tr("Cell %1, %2").arg(row + 1).arg(ports->horizontalHeaderItem(column)->text()));
    });
    connect(ports, &AQTableWidget::AItemChanged, this, [activity](QTableWidgetItem* item) {
        activity->add(tr("Changed: %1").arg(item->text()));
    });

    auto* results = new AQTableView(QStringLiteral("resultsView"), this, true);
    auto* model = new QStandardItemModel(0, 3, results);
    model->setHorizontalHeaderLabels({tr("Frequency (GHz)"), tr("|S11| (dB)"), tr("Phase (deg)")});
    for (int step = 0; step < 12; ++step) {
        const double f = 1.0 + step * 0.5;
        const double s11 = -3.0 - 17.0 * std::exp(-std::pow(f - 5.8, 2));
        model->appendRow({new QStandardItem(QString::number(f, 'f', 1)), new QStandardItem(QString::number(s11, 'f', 2)),
                          new QStandardItem(QString::number(int(f * 37) % 360 - 180))});
    }
    results->setModel(model);
    results->resizeColumnsToContents();
    results->horizontalHeader()->setStretchLastSection(true);
    results->setSelectionBehavior(QAbstractItemView::SelectRows);
    connect(results, &AQTableView::AClicked, this, [activity](const QModelIndex& index) {
        activity->add(tr("Result at %1 GHz").arg(index.sibling(index.row(), 0).data().toString()));
    });

    auto* tables = new QVBoxLayout;
    tables->addWidget(new QLabel(tr("Ports:")));
    tables->addWidget(ports, 1);
    tables->addWidget(new QLabel(tr("Sweep results:")));
    tables->addWidget(results, 2);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(tables, 3);
    layout->addWidget(activity, 2);
}

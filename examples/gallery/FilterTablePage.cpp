#include "FilterTablePage.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQCheckBox.h>
#include <Widget/Filter/AQFilterHeaderView.h>
#include <Widget/Filter/AQSortMultiFilterProxyModel.h>
#include <Widget/Filter/FilterKind.h>

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPointF>
#include <QTableView>
#include <QVBoxLayout>

using namespace QtUIBase;

/**
 * A million rows computed from the row number when asked for, never
 * stored. The display role shows texts; Qt::UserRole gives the values the
 * proxy filters and sorts (names, doubles, ints, points, bools). While
 * kinds are published, the horizontal header's display role gives each
 * column's FilterKind (what the filter header reads when it makes its
 * drop-downs); FilterKindRole always does.
 */
class MillionRowModel : public QAbstractTableModel
{
public:
    static constexpr int Rows = 1000000;

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : Rows; }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : 7; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::UserRole))
            return QVariant();
        const QVariant value = valueAt(index.row(), index.column());
        if (role == Qt::UserRole)
            return value;
        switch (index.column()) {
        case 1:
            return QString::number(value.toDouble(), 'f', 3);
        case 3:
            return QStringLiteral("(%1, %2)").arg(value.toPointF().x()).arg(value.toPointF().y());
        case 4:
            return value.toBool() ? QStringLiteral("PASS") : QStringLiteral("FAIL");
        case 5:
            return value.toBool() ? QStringLiteral("ON") : QStringLiteral("OFF");
        default:
            return value;
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const int kinds[] = {Text, Real, Integer, Region, PassFail, OnOff, Disabled};
        if (orientation != Qt::Horizontal || section < 0 || section >= 7)
            return QAbstractTableModel::headerData(section, orientation, role);
        if (role == FilterKindRole || (role == Qt::DisplayRole && m_publishKinds))
            return kinds[section];
        if (role == Qt::DisplayRole) {
            static const char* const titles[] = {"Name", "Frequency / GHz", "Cells", "Position", "Check", "Solver",
                                                 "Note"};
            return tr(titles[section]);
        }
        return QVariant();
    }

    void publishKinds(bool publish)
    {
        m_publishKinds = publish;
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, 6);
    }

private:
    static quint32 mix(quint32 x)
    {
        x ^= x >> 16;
        x *= 0x7feb352dU;
        x ^= x >> 15;
        x *= 0x846ca68bU;
        return x ^ (x >> 16);
    }

    static QVariant valueAt(int row, int column)
    {
        const quint32 h = mix(quint32(row) * 7u + quint32(column));
        switch (column) {
        case 0: {
            static const char* const kinds[] = {"Port", "Probe", "Monitor", "Mesh node", "Field probe", "Lumped port"};
            return QLatin1String(kinds[h % 6]) + QLatin1Char(' ') + QString::number(h / 6 % 5000);
        }
        case 1:
            return 0.5 + (h % 100000) / 10000.0;
        case 2:
            return int(h % 100000);
        case 3:
            return QPointF(h % 101, (h >> 8) % 101);
        case 4:
        case 5:
            return (h % 10) < 7;
        default:
            return h % 4 == 0 ? QStringLiteral("checked by hand") : QString();
        }
    }

    bool m_publishKinds = false;
};

FilterTablePage::FilterTablePage(QWidget* parent)
    : QWidget(parent)
{
    AQObjects::add(this, QStringLiteral("FilterTable"));

    m_model = new MillionRowModel(this);
    m_proxy = new AQSortMultiFilterProxyModel(this);
    m_proxy->setFilterRole(Qt::UserRole);
    m_proxy->setSortRole(Qt::UserRole);
    m_proxy->setSourceModel(m_model);

    m_view = new QTableView(this);
    m_header = new AQFilterHeaderView(QStringLiteral("filterHeader"), this, true);
    m_view->setHorizontalHeader(m_header);
    m_model->publishKinds(true);
    m_view->setModel(m_proxy); // the header makes its drop-downs now
    m_model->publishKinds(false);
    m_header->setStretchLastSection(true);
    m_view->setColumnWidth(0, 150);
    m_view->setColumnWidth(1, 150);
    m_view->setColumnWidth(3, 110);
    m_view->verticalHeader()->setDefaultSectionSize(22);
    // No sorting until a section is clicked: a million rows sort in a moment,
    // but not for free at start-up.
    m_header->setSortIndicator(-1, Qt::AscendingOrder);
    m_view->setSortingEnabled(true);

    connect(m_header, &AQFilterHeaderView::filterChanged, m_proxy,
            qOverload<int, const QString&>(&AQSortMultiFilterProxyModel::setFilter));
    // A replayed sort arrives as the header's signal only: sort from it.
    connect(m_header, &AQHeaderView::ASortIndicatorChanged, m_view,
            [this](int column, Qt::SortOrder order) { m_view->sortByColumn(column, order); });

    auto* showFilters = new AQCheckBox(QStringLiteral("showFilters"), tr("Show filters"), this, true);
    showFilters->setChecked(true);
    connect(showFilters, &AQCheckBox::AClicked, m_header, &AQFilterHeaderView::setFilterVisibility);
    m_count = new QLabel(this);
    connect(m_proxy, &QAbstractItemModel::layoutChanged, this, &FilterTablePage::updateCount);
    connect(m_proxy, &QAbstractItemModel::rowsRemoved, this, &FilterTablePage::updateCount);
    connect(m_proxy, &QAbstractItemModel::rowsInserted, this, &FilterTablePage::updateCount);

    auto* bar = new QHBoxLayout;
    bar->addWidget(new QLabel(tr("Type wildcard text (* and ?) under Name; click a numeric, position, "
                                 "check or solver filter for its conditions. Right-click a filter to clear it."),
                              this),
                   1);
    bar->addWidget(showFilters);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_count);
    updateCount();
}

void FilterTablePage::updateCount()
{
    const QLocale locale;
    m_count->setText(tr("%1 of %2 rows shown")
                         .arg(locale.toString(m_proxy->rowCount()), locale.toString(MillionRowModel::Rows)));
}

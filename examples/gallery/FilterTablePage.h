#pragma once

#include <QWidget>

class QLabel;
class QTableView;

namespace QtUIBase {
class AQFilterHeaderView;
class AQSortMultiFilterProxyModel;
} // namespace QtUIBase

class MillionRowModel;

/**
 * The "Filter table" page: a million generated rows behind the multi-filter
 * proxy, with a filter drop-down under every column (a column of each
 * filter kind: wildcard text, real and integer conditions, a region,
 * pass/fail and on/off, and a column without filter) and natural sorting
 * by a click on a section.
 *
 * The page registers as "FilterTable"; the header and its drop-downs are
 * recorded under it ("filterHeader", "filterHeader_filter_<column>").
 */
class FilterTablePage : public QWidget
{
    Q_OBJECT

public:
    explicit FilterTablePage(QWidget* parent = nullptr);

    QTableView* view() const { return m_view; }
    QtUIBase::AQFilterHeaderView* header() const { return m_header; }

private:
    void updateCount();

    MillionRowModel* m_model = nullptr;
    QtUIBase::AQSortMultiFilterProxyModel* m_proxy = nullptr;
    QTableView* m_view = nullptr;
    QtUIBase::AQFilterHeaderView* m_header = nullptr;
    QLabel* m_count = nullptr;
};

#pragma once

#include "OrvexQtUIBase_export.h"

#include <QSortFilterProxyModel>

#include <memory>

class QCollator;

namespace QtUIBase::FilterSupport {
class RowFilterCache;
}

namespace Gui::Widget {

/**
 * A sorting proxy with one column filter, read from the display role.
 *
 * setFilter() takes either a text pattern or numeric conditions. A text
 * with "<", ">" or "=" anywhere is a list of comma-separated conditions on
 * the cell's double value ("=v", "<v", ">v", all strict; ">2,<4" keeps
 * 2 < value < 4). Any other text is a pattern: a regular expression when it
 * starts with "r " (the rest, trimmed), otherwise a wildcard pattern; an
 * empty cell passes, any other passes when the first match in its trimmed
 * text starts at 0, so a wildcard "ab" keeps "abc" but not "xab". A pattern
 * that is not valid (an unbalanced "[" or "(") matches nothing: only empty
 * cells pass. Patterns are case-sensitive unless setCaseSensitive(false);
 * a change of case sensitivity applies from the next setFilter().
 *
 * Sorting: with a collator, its order, except that with the collator's
 * numeric mode on, texts starting with "-" are negative numbers and sort
 * first, larger magnitudes first (-10, -5, 0, 3). Without one, strings by
 * QString::compare (case as set above), doubles by their display texts read
 * with atof; int columns keep the source order, and other types compare as
 * equal.
 *
 * Defaults: no filter (column -1), wildcard syntax, case-sensitive, no
 * collator. The filter is compiled once per text, and a change that alters
 * many rows rebuilds the mapping in one pass (see AQSortMultiFilterProxyModel).
 */
class ORVEXQTUIBASE_EXPORT OrvexSortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit OrvexSortFilterProxyModel(QObject* parent = nullptr);
    ~OrvexSortFilterProxyModel() override;

    void setSourceModel(QAbstractItemModel* model) override;

    bool caseSensitive() const { return m_caseSensitive; }
    void setCaseSensitive(bool caseSensitive) { m_caseSensitive = caseSensitive; }
    void setCollator(std::shared_ptr<QCollator> collator) { m_collator = std::move(collator); }
    std::shared_ptr<QCollator> collator() const { return m_collator; }

    int filterColumn() const { return m_filterColumn; }
    /// The stored filter text (for "r " patterns, without the prefix).
    QString filterText() const { return m_filterText; }
    /// True for a text pattern, false for numeric conditions.
    bool isTextMode() const { return m_textMode; }
    int patternSyntax() const { return m_patternSyntax; }

public Q_SLOTS:
    void setFilter(int column, const QString& filter);
    void resetFilter();

Q_SIGNALS:
    void filterDone();

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void applyFilter();

    int m_filterColumn = -1;
    QString m_filterText;
    bool m_textMode = true;
    int m_patternSyntax;
    bool m_caseSensitive = true;
    std::shared_ptr<QCollator> m_collator;
    std::unique_ptr<QtUIBase::FilterSupport::RowFilterCache> m_rows;
};

} // namespace Gui::Widget

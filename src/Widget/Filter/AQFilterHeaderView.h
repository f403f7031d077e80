#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQHeaderView.h"

#include <QList>
#include <QStringList>

#include <set>
#include <string>

namespace QtUIBase {

class AQFilterComboBox;

/**
 * A horizontal table header with a filter drop-down (AQFilterComboBox)
 * under each section's title.
 *
 * Setting a model creates one drop-down per section, named after the
 * header plus "_filter_<section>", of the FilterKind the model gives as the
 * section's horizontal header data in the display role (0, Text, when it is
 * not a number); a model reset applies changed kinds. Each change of a
 * drop-down's text is announced as filterChanged(column, pattern), which an
 * AQSortMultiFilterProxyModel's setFilter() takes. For a Text column the
 * pattern is the typed text as a whole-cell match, "?" standing for one
 * character and "*" for any run, other characters keeping their
 * regular-expression meaning, with "^$|" in front so that empty cells
 * always pass (typed a?c* gives ^$|^a.{1,1}c.*$). The other kinds announce
 * the text the filter dialog wrote (">1.5,<3", "(0,0):(10,5)", "PASS"), the
 * syntax the proxy reads for them: made into a pattern it would no longer
 * read (">1.5,<3" would become ">1.5" and "<0"). The column is read from
 * the digits of the drop-down's name, so the header's own name must not
 * contain digits.
 *
 * Column 0's filter is answered and reset only together with all the
 * others (getFilter(-1), resetFilter(-1)). Defaults: filter height 25
 * pixels (0 hides the filters; property "filter_height"), animated over
 * 250 ms by setFilterVisibility(); sections clickable and highlighted.
 */
class ORVEXQTUIBASE_EXPORT AQFilterHeaderView : public AQHeaderView
{
    Q_OBJECT
    Q_PROPERTY(int filter_height READ getFilterHeight WRITE setFilterHeight)

public:
    AQFilterHeaderView(const QString& name, QWidget* parent, bool scriptable);

    void setModel(QAbstractItemModel* model) override;
    /// Creates the drop-downs, unless there are some or no sections.
    void createFilters();

    /// -1: every drop-down's text; 1 to count-1: that one's; otherwise none.
    QStringList getFilter(int column) const;
    /// Empties the text of every (-1) or one (1 to count-1) drop-down.
    void resetFilter(int column);
    /// As resetFilter(), removing the history too.
    void resetFilterHistory(int column);
    /// Replaces @p column's history by "*" and @p values in order; false
    /// when there is no such drop-down.
    bool setFilterList(int column, const std::set<std::string>& values);

    /// Shows or hides the filters, animated when the duration is 1 ms or more.
    void setFilterVisibility(bool visible);
    bool getFilterVisibility() const { return m_filterHeight > 0; }
    void setFilterHeight(int height);
    int getFilterHeight() const { return m_filterHeight; }
    void setAnimationDuration(int milliseconds) { m_animationDuration = milliseconds; }
    int animationDuration() const { return m_animationDuration; }
    const QList<AQFilterComboBox*>& filters() const { return m_filters; }

    /// Places every drop-down under its section, or hides them all at height 0.
    void updateFilters();

    QSize sizeHint() const override;

    /// The pattern of typed text @p text in a Text column (see class comment).
    static QString textPattern(const QString& text);

Q_SIGNALS:
    void filterChanged(int column, const QString& pattern);

public Q_SLOTS:
    void modelResetEvent();
    void horizontalScrollChanged(int value);
    void textChanged(const QString& text);
    void resized(int logicalIndex, int oldSize, int newSize);

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    /// The pattern announced for text @p text of a drop-down of @p kind.
    virtual QString patternFor(const QString& text, int kind) const;
    /// The drop-downs a column operation covers (empty for column 0).
    QList<AQFilterComboBox*> filtersFor(int column) const;

private:
    int kindOf(int section) const;
    void place(int logicalIndex, int size);

    static constexpr int DefaultFilterHeight = 25;
    int m_filterHeight = DefaultFilterHeight;
    int m_animationDuration = 250;
    QList<AQFilterComboBox*> m_filters;
    QMetaObject::Connection m_resetConnection;
};

} // namespace QtUIBase

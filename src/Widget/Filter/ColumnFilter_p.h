#pragma once

// A column filter compiled once per filter text, and the cell values it
// reads, kept per source row. Shared by the two sorting proxies.

#include <QPointF>
#include <QRegExp>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <vector>

class QAbstractItemModel;

namespace QtUIBase {
namespace FilterSupport {

/// How a filter reads a cell; None: the filter passes every row unread.
enum class ValueKind : std::uint8_t { None, Text, Real, Integer, Point, Bool };

/// The cells of one column in one role, read once and converted as a
/// filter of one ValueKind reads them. Text cells keep their trimmed text
/// and whether the cell itself was empty (an empty cell passes every text
/// filter, a blank one is matched as "").
class ColumnValues
{
public:
    ValueKind kind() const { return m_kind; }
    int rows() const { return m_rows; }
    bool loaded(ValueKind kind, int rows) const { return m_kind == kind && m_rows == rows; }
    void clear() { *this = ColumnValues(); }

    /// Reads rows [0, rows) of @p column.
    void load(ValueKind kind, const QAbstractItemModel* model, int column, int role, int rows);
    /// Re-reads rows [first, last].
    void reload(const QAbstractItemModel* model, int column, int role, int first, int last);
    /// Makes room for @p count rows at @p first and reads them.
    void insert(const QAbstractItemModel* model, int column, int role, int first, int count);
    void remove(int first, int count);
    /// Holds @p value alone, read as @p kind.
    void assign(ValueKind kind, const QVariant& value);

    const QString& text(int row) const { return m_texts[std::size_t(row)]; }
    bool emptyCell(int row) const { return m_flags[std::size_t(row)] != 0; }
    double real(int row) const { return m_reals[std::size_t(row)]; }
    int integer(int row) const { return m_ints[std::size_t(row)]; }
    const QPointF& point(int row) const { return m_points[std::size_t(row)]; }
    bool truth(int row) const { return m_flags[std::size_t(row)] != 0; }

private:
    void read(const QAbstractItemModel* model, int column, int role, int row);
    void store(int row, const QVariant& value);
    /// Runs @p f on each vector that holds this kind's values.
    template <typename F>
    void forEachVector(F&& f);

    ValueKind m_kind = ValueKind::None;
    int m_rows = 0;
    std::vector<QString> m_texts;
    std::vector<std::uint8_t> m_flags; // empty text cell, or the bool value
    std::vector<double> m_reals;
    std::vector<int> m_ints;
    std::vector<QPointF> m_points;
};

/**
 * One column's filter, compiled from its text: a regular expression (with
 * a fast path for the anchored wildcard alternatives a filter header
 * builds, matched without QRegExp but with its exact results), a list of
 * numeric conditions, a region, or a truth value. Two filters compare equal
 * when compiled from the same kind and text with the same options.
 */
class ColumnFilter
{
public:
    /// Passes every row.
    ColumnFilter() = default;
    /// A cell passes when it is empty, or when the first match of
    /// @p pattern in its trimmed text starts at 0. An invalid pattern
    /// matches nothing, so only empty cells pass.
    static ColumnFilter text(const QString& pattern, QRegExp::PatternSyntax syntax, Qt::CaseSensitivity cs);
    /// Comma-separated conditions such as ">1,<5" or "=3" on doubles or ints.
    static ColumnFilter conditions(const QString& text, bool integer);
    /// "(x1,y1):(x2,y2)": inclusive, corners as given; fewer than four numbers pass all.
    static ColumnFilter region(const QString& text);
    /// A truth filter: @p text equal to @p trueWord keeps true values, equal
    /// to @p falseWord false ones; any other text keeps all.
    static ColumnFilter truth(const QString& text, const QString& trueWord, const QString& falseWord);

    ValueKind valueKind() const { return m_kind; }
    bool operator==(const ColumnFilter& other) const;
    bool operator!=(const ColumnFilter& other) const { return !(*this == other); }

    /// Reads @p value as this filter's kind and tests it.
    bool accepts(const QVariant& value) const;
    /// Tests row @p row of values read for this filter's kind.
    bool accepts(const ColumnValues& values, int row) const;

private:
    struct Condition
    {
        char op;
        double real;
        int integer;
    };
    bool acceptsTrimmed(const QString& trimmed) const;
    bool acceptsReal(double value) const;
    bool acceptsInteger(int value) const;
    bool acceptsPoint(const QPointF& point) const;
    bool acceptsTruth(bool value) const { return value ? m_keepTrue : m_keepFalse; }

    ValueKind m_kind = ValueKind::None;
    // What the filter was compiled from, for operator==.
    QString m_source;
    int m_options = 0;

    // Text: wildcard alternatives when the pattern has that shape (each a
    // token list matched against the whole trimmed text), else QRegExp.
    std::vector<std::vector<std::uint32_t>> m_globs;
    bool m_caseInsensitive = false;
    bool m_useRegExp = false;
    mutable QRegExp m_regExp;

    std::vector<Condition> m_conditions;
    double m_region[4] = {};
    bool m_keepTrue = true;
    bool m_keepFalse = true;
};

} // namespace FilterSupport
} // namespace QtUIBase

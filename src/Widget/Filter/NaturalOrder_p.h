#pragma once

// Natural order of strings (embedded numbers compared as numbers) through
// keys built once per string, and a per-source-row cache of those keys for
// the sorting proxy.

#include "Widget/Filter/SourceRowCache_p.h"

#include <QPointF>
#include <QString>

#include <cstdint>
#include <vector>

namespace QtUIBase {
namespace FilterSupport {

/**
 * A string's natural-order key: its pieces (numbers at even positions,
 * texts at odd ones) as 32-bit elements, so that most comparisons are a
 * plain element-wise scan. A number is one element whose unsigned order is
 * the signed 32-bit order of the piece's value; a text is its UTF-16 units
 * plus one, closed by 0. Trailing pieces that equal a missing piece (a
 * zero, an empty text) are left out.
 */
struct NaturalKey
{
    /// Appends the key of @p text to @p elements; answers its piece count.
    static std::uint32_t append(const QString& text, std::vector<std::uint32_t>& elements);
    /// Three-way comparison of two keys (elements and piece counts).
    static int compare(const std::uint32_t* a, std::size_t aSize, std::uint32_t aPieces, const std::uint32_t* b,
                       std::size_t bSize, std::uint32_t bPieces);
    static bool lessThan(const QString& a, const QString& b);
    /// The key's first elements packed into 64 bits, ordered as the keys:
    /// a differing prefix decides a comparison without reading the key.
    static std::uint64_t prefix(const std::uint32_t* key, std::size_t size);
};

/**
 * The sort values of one column's top-level source rows in one role, read
 * once per row: natural keys for strings, points as they are. Rows changed
 * by the model are read again when next compared.
 */
class SortKeyCache : public SourceRowCache
{
public:
    enum class Order { Less, NotLess, Other };
    /// Compares two rows of @p column; Other when they are not two strings
    /// or two points (or not cached), for the proxy's general comparison.
    Order compare(int leftRow, int rightRow, int column, int role);
    /// Reads every row and sorts them once, so that later comparisons (a
    /// whole sort, a mapping rebuilt after a filter change) only compare
    /// two ranks. Does nothing unless the column holds only strings or only
    /// points. Ranks last until the model changes.
    void rankAll(int column, int role);

protected:
    void insertRows(int first, int count) override;
    void removeRows(int first, int count) override;
    void changeRows(int first, int last, int firstColumn, int lastColumn) override;
    void dropAll() override;

private:
    enum Type : std::uint8_t { Unread, String, Point, OtherType };
    struct Entry
    {
        std::uint64_t prefix = 0; // string: NaturalKey::prefix
        std::uint32_t offset = 0; // string: first element; point: index in m_points
        std::uint32_t size = 0;
        std::uint32_t pieces = 0; // string: piece count
        Type type = Unread;
    };
    const Entry& entry(int row);
    void forget(Entry& e);
    void follow(int column, int role);
    Order compareEntries(const Entry& l, const Entry& r) const;

    int m_column = -1;
    int m_role = -1;
    int m_rows = -1;
    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_elements;
    std::vector<QPointF> m_points;
    std::size_t m_unused = 0; // elements no entry refers to any more
    std::vector<std::uint32_t> m_ranks; // by row when not empty; equal keys share one
};

} // namespace FilterSupport
} // namespace QtUIBase

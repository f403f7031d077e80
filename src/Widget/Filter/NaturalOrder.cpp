#include "Widget/Filter/NaturalOrder_p.h"

#include <QAbstractItemModel>
#include <QVarLengthArray>

#include <algorithm>

namespace QtUIBase {
namespace FilterSupport {

namespace {

constexpr std::uint32_t SignFlip = 0x80000000u;
constexpr std::uint32_t ZeroNumber = SignFlip; // the element of the number 0

struct Piece
{
    int start;
    int length;
};

} // namespace

std::uint32_t NaturalKey::append(const QString& text, std::vector<std::uint32_t>& elements)
{
    // The text before each run of digits (possibly empty), the run, ...,
    // and the text after the last run when there is one.
    QVarLengthArray<Piece, 16> pieces;
    const QChar* d = text.constData();
    const int n = text.size();
    int textStart = 0;
    for (int i = 0; i < n;) {
        if (!d[i].isDigit()) {
            ++i;
            continue;
        }
        const int runStart = i;
        while (i < n && d[i].isDigit())
            ++i;
        pieces.append({textStart, runStart - textStart});
        pieces.append({runStart, i - runStart});
        textStart = i;
    }
    if (textStart < n)
        pieces.append({textStart, n - textStart});

    // Positions alternate number, text: a list that does not open with a
    // number gets a "0" in front (start -1).
    if (!pieces.isEmpty()) {
        bool ok = false;
        text.midRef(pieces[0].start, pieces[0].length).toUInt(&ok, 10);
        if (!ok)
            pieces.prepend({-1, 1});
    }
    const auto numberAt = [&](int i) -> std::uint32_t {
        if (pieces[i].start < 0)
            return 0;
        // Runs past 4294967295 do not read, and count as 0.
        return text.midRef(pieces[i].start, pieces[i].length).toUInt(nullptr, 10);
    };
    // A missing piece compares as 0 or as an empty text: trailing pieces
    // equal to that are dropped, so keys of equal strings are equal.
    int count = pieces.size();
    while (count > 0 && ((count - 1) % 2 == 0 ? numberAt(count - 1) == 0 : pieces[count - 1].length == 0))
        --count;
    for (int i = 0; i < count; ++i) {
        if (i % 2 == 0) {
            elements.push_back(numberAt(i) ^ SignFlip);
            continue;
        }
        for (int k = 0; k < pieces[i].length; ++k)
            elements.push_back(std::uint32_t(d[pieces[i].start + k].unicode()) + 1);
        elements.push_back(0);
    }
    return std::uint32_t(count);
}

int NaturalKey::compare(const std::uint32_t* a, std::size_t aSize, std::uint32_t aPieces, const std::uint32_t* b,
                        std::size_t bSize, std::uint32_t bPieces)
{
    const std::size_t common = std::min(aSize, bSize);
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] != b[i])
            return a[i] < b[i] ? -1 : 1;
    }
    if (aSize == bSize)
        return 0;
    // One key is a prefix of the other and ends at a piece boundary: the
    // longer one's further pieces meet missing pieces (0, or "").
    const bool aLonger = aSize > bSize;
    const std::uint32_t* rest = aLonger ? a + bSize : b + aSize;
    const std::size_t restSize = aLonger ? aSize - bSize : bSize - aSize;
    std::uint32_t position = aLonger ? bPieces : aPieces;
    for (std::size_t j = 0; j < restSize; ++j, ++position) {
        int order = 0;
        if (position % 2 == 0)
            order = rest[j] == ZeroNumber ? 0 : (rest[j] > ZeroNumber ? 1 : -1);
        else
            order = rest[j] == 0 ? 0 : 1; // a non-empty text is greater than ""
        if (order != 0)
            return aLonger ? order : -order;
    }
    return 0;
}

bool NaturalKey::lessThan(const QString& a, const QString& b)
{
    std::vector<std::uint32_t> keys;
    const std::uint32_t aPieces = append(a, keys);
    const std::size_t aSize = keys.size();
    const std::uint32_t bPieces = append(b, keys);
    return compare(keys.data(), aSize, aPieces, keys.data() + aSize, keys.size() - aSize, bPieces) < 0;
}

std::uint64_t NaturalKey::prefix(const std::uint32_t* key, std::size_t size)
{
    // The key's elements, missing pieces included (a number reads 0, a text
    // ends at once), as an order-preserving byte string cut after 8 bytes.
    // Numbers 0 to 126 (the common case, such as the "0" put in front of a
    // text) and text units below 127 take one byte each.
    std::uint64_t bytes = 0;
    int count = 0;
    const auto put = [&](std::uint32_t byte) {
        if (count < 8) {
            bytes = (bytes << 8) | (byte & 0xffu);
            ++count;
        }
    };
    const auto putWide = [&](std::uint32_t lead, std::uint32_t value, int width) {
        put(lead);
        for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
            put(value >> shift);
    };
    std::size_t i = 0;
    for (std::uint32_t position = 0; count < 8; ++position) {
        if (position % 2 == 0) {
            const std::uint32_t number = i < size ? key[i++] : ZeroNumber;
            if (number >= ZeroNumber && number - ZeroNumber < 0x7f)
                put(0x80 + (number - ZeroNumber));
            else
                putWide(number < ZeroNumber ? 0x00 : 0xff, number, 4);
            continue;
        }
        while (count < 8) {
            const std::uint32_t unit = i < size ? key[i++] : 0;
            if (unit < 0x7f)
                put(unit);
            else
                putWide(0x7f, unit, 3);
            if (unit == 0)
                break;
        }
    }
    return bytes;
}

// --- SortKeyCache --------------------------------------------------------------

void SortKeyCache::follow(int column, int role)
{
    if (column == m_column && role == m_role && m_rows >= 0)
        return;
    dropAll();
    m_column = column;
    m_role = role;
    m_rows = model()->rowCount();
    m_entries.resize(std::size_t(m_rows));
}

SortKeyCache::Order SortKeyCache::compareEntries(const Entry& l, const Entry& r) const
{
    if (l.type == String && r.type == String) {
        if (l.prefix != r.prefix)
            return l.prefix < r.prefix ? Order::Less : Order::NotLess;
        const std::uint32_t* e = m_elements.data();
        return NaturalKey::compare(e + l.offset, l.size, l.pieces, e + r.offset, r.size, r.pieces) < 0 ? Order::Less
                                                                                                      : Order::NotLess;
    }
    if (l.type == Point && r.type == Point) {
        const QPointF& a = m_points[l.offset];
        const QPointF& b = m_points[r.offset];
        const bool less = a.x() == b.x() ? a.y() < b.y() : a.x() < b.x();
        return less ? Order::Less : Order::NotLess;
    }
    return Order::Other;
}

SortKeyCache::Order SortKeyCache::compare(int leftRow, int rightRow, int column, int role)
{
    if (!model())
        return Order::Other;
    follow(column, role);
    if (leftRow < 0 || rightRow < 0 || leftRow >= m_rows || rightRow >= m_rows)
        return Order::Other;
    if (!m_ranks.empty())
        return m_ranks[std::size_t(leftRow)] < m_ranks[std::size_t(rightRow)] ? Order::Less : Order::NotLess;
    const Entry& l = entry(leftRow);
    return compareEntries(l, entry(rightRow));
}

void SortKeyCache::rankAll(int column, int role)
{
    if (!model())
        return;
    follow(column, role);
    if (!m_ranks.empty() || m_rows < 2)
        return;
    Type type = Unread;
    for (int row = 0; row < m_rows; ++row) {
        const Type t = entry(row).type;
        if (t == OtherType || (type != Unread && t != type))
            return; // mixed values compare as the proxy's base class does
        type = t;
    }
    // Sorted as (prefix, row) pairs: the merges stream through memory, and
    // only equal prefixes look at the keys themselves.
    std::vector<std::pair<std::uint64_t, std::uint32_t>> order;
    order.reserve(std::size_t(m_rows));
    for (int row = 0; row < m_rows; ++row)
        order.emplace_back(m_entries[std::size_t(row)].prefix, std::uint32_t(row));
    const auto less = [this](const std::pair<std::uint64_t, std::uint32_t>& a,
                             const std::pair<std::uint64_t, std::uint32_t>& b) {
        if (a.first != b.first)
            return a.first < b.first;
        return compareEntries(m_entries[a.second], m_entries[b.second]) == Order::Less;
    };
    std::stable_sort(order.begin(), order.end(), less);
    m_ranks.assign(std::size_t(m_rows), 0);
    std::uint32_t rank = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        rank += less(order[i - 1], order[i]);
        m_ranks[order[i].second] = rank;
    }
}

const SortKeyCache::Entry& SortKeyCache::entry(int row)
{
    Entry& e = m_entries[std::size_t(row)];
    if (e.type != Unread)
        return e;
    const QVariant value = model()->data(model()->index(row, m_column), m_role);
    if (value.type() == QVariant::String) {
        e.type = String;
        e.offset = std::uint32_t(m_elements.size());
        e.pieces = NaturalKey::append(value.toString(), m_elements);
        e.size = std::uint32_t(m_elements.size() - e.offset);
        e.prefix = NaturalKey::prefix(m_elements.data() + e.offset, e.size);
    } else if (value.type() == QVariant::PointF) {
        e.type = Point;
        e.offset = std::uint32_t(m_points.size());
        m_points.push_back(value.toPointF());
    } else {
        e.type = OtherType;
    }
    return e;
}

void SortKeyCache::forget(Entry& e)
{
    m_ranks.clear();
    m_unused += e.type == String ? e.size : 0;
    e = Entry();
}

void SortKeyCache::insertRows(int first, int count)
{
    if (m_rows < 0)
        return;
    m_entries.insert(m_entries.begin() + first, std::size_t(count), Entry());
    m_rows += count;
    m_ranks.clear();
}

void SortKeyCache::removeRows(int first, int count)
{
    if (m_rows < 0)
        return;
    for (int row = first; row < first + count; ++row)
        forget(m_entries[std::size_t(row)]);
    m_entries.erase(m_entries.begin() + first, m_entries.begin() + first + count);
    m_rows -= count;
}

void SortKeyCache::changeRows(int first, int last, int firstColumn, int lastColumn)
{
    if (m_rows < 0 || m_column < firstColumn || m_column > lastColumn)
        return;
    for (int row = first; row <= last && row < m_rows; ++row)
        forget(m_entries[std::size_t(row)]);
    // Keys are appended, never rewritten in place: start afresh once most
    // of the stored elements belong to forgotten keys.
    if (m_unused > (1u << 20) && m_unused * 2 > m_elements.size())
        dropAll();
}

void SortKeyCache::dropAll()
{
    m_rows = -1;
    m_entries.clear();
    m_elements.clear();
    m_points.clear();
    m_unused = 0;
    m_ranks.clear();
}

} // namespace FilterSupport
} // namespace QtUIBase

#include "Widget/Filter/ColumnFilter_p.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <type_traits>

namespace QtUIBase {
namespace FilterSupport {

namespace {

// Glob tokens: a UTF-16 unit (lower-cased for case-insensitive filters),
// or one of these two.
constexpr std::uint32_t AnyOne = 0x10000;
constexpr std::uint32_t AnyRun = 0x10001;

inline std::uint32_t lower(ushort unit)
{
    if (unit < 128)
        return (unit >= 'A' && unit <= 'Z') ? unit + 32u : unit;
    return QChar::toLower(uint(unit));
}

bool isRegExpMeta(QChar c)
{
    static const QString meta = QStringLiteral("\\^$.|?*+()[]{}");
    return meta.contains(c);
}

bool isQuantifier(const QString& s, int i)
{
    if (i >= s.size())
        return false;
    const QChar c = s.at(i);
    return c == QLatin1Char('*') || c == QLatin1Char('+') || c == QLatin1Char('?') || c == QLatin1Char('{');
}

// One alternative of a regular expression made of literal characters,
// ".", ".*" and ".{1,1}", with an optional "^" in front and "$" at the end
// (the shape a filter header builds from typed wildcard text). Only a match
// starting at 0 counts, so "^" changes nothing and a missing "$" means the
// rest of the text may be anything. Answers false for any other shape.
bool parseRegExpAlternative(const QString& alt, bool ci, std::vector<std::uint32_t>& tokens)
{
    int i = alt.startsWith(QLatin1Char('^')) ? 1 : 0;
    const int n = alt.size();
    bool anchoredEnd = false;
    while (i < n) {
        const QChar c = alt.at(i);
        if (c == QLatin1Char('$')) {
            if (i != n - 1)
                return false;
            anchoredEnd = true;
            break;
        }
        if (c == QLatin1Char('.')) {
            int length = 1;
            std::uint32_t token = AnyOne;
            if (i + 1 < n && alt.at(i + 1) == QLatin1Char('*')) {
                length = 2;
                token = AnyRun;
            } else if (alt.midRef(i, 6) == QLatin1String(".{1,1}")) {
                length = 6;
            }
            i += length;
            if (isQuantifier(alt, i))
                return false;
            tokens.push_back(token);
            continue;
        }
        ushort unit = c.unicode();
        if (c == QLatin1Char('\\')) {
            if (i + 1 >= n || !isRegExpMeta(alt.at(i + 1)))
                return false;
            unit = alt.at(i + 1).unicode();
            i += 2;
        } else {
            if (isRegExpMeta(c))
                return false;
            ++i;
        }
        if (isQuantifier(alt, i))
            return false;
        tokens.push_back(ci ? lower(unit) : unit);
    }
    if (!anchoredEnd)
        tokens.push_back(AnyRun);
    return true;
}

bool parseRegExp(const QString& pattern, bool ci, std::vector<std::vector<std::uint32_t>>& globs)
{
    QString alt;
    for (int i = 0; i <= pattern.size(); ++i) {
        if (i == pattern.size() || pattern.at(i) == QLatin1Char('|')) {
            globs.emplace_back();
            if (!parseRegExpAlternative(alt, ci, globs.back()))
                return false;
            alt.clear();
            continue;
        }
        alt += pattern.at(i);
        if (pattern.at(i) == QLatin1Char('\\') && i + 1 < pattern.size())
            alt += pattern.at(++i);
    }
    return true;
}

// QRegExp's wildcard syntax without sets or escapes: "*" and "?" over
// literal characters, found anywhere, so only a prefix has to match.
bool parseWildcard(const QString& pattern, bool ci, std::vector<std::uint32_t>& tokens)
{
    for (const QChar c : pattern) {
        if (c == QLatin1Char('*'))
            tokens.push_back(AnyRun);
        else if (c == QLatin1Char('?'))
            tokens.push_back(AnyOne);
        else if (c == QLatin1Char('[') || c == QLatin1Char(']') || c == QLatin1Char('\\'))
            return false;
        else
            tokens.push_back(ci ? lower(c.unicode()) : c.unicode());
    }
    tokens.push_back(AnyRun);
    return true;
}

// Whole-text match of glob tokens; a run backtracks to the last AnyRun.
bool globMatch(const std::vector<std::uint32_t>& p, const QString& text, bool ci)
{
    const ushort* s = text.utf16();
    const std::size_t n = std::size_t(text.size());
    const std::size_t m = p.size();
    std::size_t si = 0;
    std::size_t pi = 0;
    std::size_t star = m;
    std::size_t mark = 0;
    while (si < n) {
        if (pi < m && p[pi] == AnyRun) {
            star = pi++;
            mark = si;
        } else if (pi < m && (p[pi] == AnyOne || p[pi] == (ci ? lower(s[si]) : s[si]))) {
            ++pi;
            ++si;
        } else if (star < m) {
            pi = star + 1;
            si = ++mark;
        } else {
            return false;
        }
    }
    while (pi < m && p[pi] == AnyRun)
        ++pi;
    return pi == m;
}

bool matchesEverything(const std::vector<std::uint32_t>& glob)
{
    if (glob.empty())
        return false; // matches the empty text only
    for (std::uint32_t token : glob) {
        if (token != AnyRun)
            return false;
    }
    return true;
}

} // namespace

ColumnFilter ColumnFilter::text(const QString& pattern, QRegExp::PatternSyntax syntax, Qt::CaseSensitivity cs)
{
    ColumnFilter filter;
    filter.m_kind = ValueKind::Text;
    filter.m_source = pattern;
    filter.m_options = int(syntax) * 2 + int(cs);
    filter.m_caseInsensitive = cs == Qt::CaseInsensitive;
    filter.m_regExp = QRegExp(pattern, cs, syntax);
    bool simple = false;
    if (filter.m_regExp.isValid()) {
        if (syntax == QRegExp::RegExp) {
            simple = parseRegExp(pattern, filter.m_caseInsensitive, filter.m_globs);
        } else if (syntax == QRegExp::Wildcard) {
            filter.m_globs.emplace_back();
            simple = parseWildcard(pattern, filter.m_caseInsensitive, filter.m_globs.back());
        }
    }
    if (!simple) {
        filter.m_globs.clear();
        filter.m_useRegExp = true;
        return filter;
    }
    for (const auto& glob : filter.m_globs) {
        if (matchesEverything(glob))
            return ColumnFilter();
    }
    return filter;
}

ColumnFilter ColumnFilter::conditions(const QString& text, bool integer)
{
    ColumnFilter filter;
    const QStringList parts = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        // The first operator character; the number is the rest of the part.
        int at = -1;
        for (int i = 0; i < part.size() && at < 0; ++i) {
            if (part.at(i) == QLatin1Char('<') || part.at(i) == QLatin1Char('>') || part.at(i) == QLatin1Char('='))
                at = i;
        }
        if (at < 0)
            continue;
        const QString number = part.mid(at + 1);
        filter.m_conditions.push_back({part.at(at).toLatin1(), number.toDouble(), number.toInt(nullptr, 10)});
    }
    if (filter.m_conditions.empty())
        return ColumnFilter();
    filter.m_kind = integer ? ValueKind::Integer : ValueKind::Real;
    filter.m_source = text;
    return filter;
}

ColumnFilter ColumnFilter::region(const QString& text)
{
    ColumnFilter filter;
    QRegExp number(QStringLiteral("([+-]?(\\d*\\.)?\\d+)"));
    int pos = 0;
    for (double& corner : filter.m_region) {
        pos = number.indexIn(text, pos);
        if (pos < 0)
            return ColumnFilter();
        corner = number.cap(1).toDouble();
        pos += number.matchedLength();
    }
    filter.m_kind = ValueKind::Point;
    filter.m_source = text;
    return filter;
}

ColumnFilter ColumnFilter::truth(const QString& text, const QString& trueWord, const QString& falseWord)
{
    ColumnFilter filter;
    if (text != trueWord && text != falseWord)
        return filter;
    filter.m_kind = ValueKind::Bool;
    filter.m_source = text;
    filter.m_options = trueWord.size(); // tells pass/fail from on/off
    filter.m_keepTrue = text == trueWord;
    filter.m_keepFalse = !filter.m_keepTrue;
    return filter;
}

bool ColumnFilter::operator==(const ColumnFilter& other) const
{
    return m_kind == other.m_kind && m_options == other.m_options && m_source == other.m_source;
}

bool ColumnFilter::acceptsTrimmed(const QString& trimmed) const
{
    if (m_useRegExp)
        return m_regExp.indexIn(trimmed) == 0;
    for (const auto& glob : m_globs) {
        if (globMatch(glob, trimmed, m_caseInsensitive))
            return true;
    }
    return false;
}

bool ColumnFilter::acceptsReal(double value) const
{
    for (const Condition& c : m_conditions) {
        if ((c.op == '=' && !(value == c.real)) || (c.op == '<' && value >= c.real) || (c.op == '>' && c.real >= value))
            return false;
    }
    return true;
}

bool ColumnFilter::acceptsInteger(int value) const
{
    for (const Condition& c : m_conditions) {
        if ((c.op == '=' && value != c.integer) || (c.op == '<' && value >= c.integer)
            || (c.op == '>' && value <= c.integer))
            return false;
    }
    return true;
}

bool ColumnFilter::acceptsPoint(const QPointF& p) const
{
    return !(m_region[0] > p.x() || m_region[1] > p.y() || p.x() > m_region[2] || p.y() > m_region[3]);
}

bool ColumnFilter::accepts(const QVariant& value) const
{
    if (m_kind == ValueKind::None)
        return true;
    ColumnValues one; // read as a column's cells are, so both ways agree
    one.assign(m_kind, value);
    return accepts(one, 0);
}

bool ColumnFilter::accepts(const ColumnValues& values, int row) const
{
    switch (m_kind) {
    case ValueKind::None:
        return true;
    case ValueKind::Text:
        return values.emptyCell(row) || acceptsTrimmed(values.text(row));
    case ValueKind::Real:
        return acceptsReal(values.real(row));
    case ValueKind::Integer:
        return acceptsInteger(values.integer(row));
    case ValueKind::Point:
        return acceptsPoint(values.point(row));
    case ValueKind::Bool:
        return acceptsTruth(values.truth(row));
    }
    return true;
}

// --- ColumnValues --------------------------------------------------------------

template <typename F>
void ColumnValues::forEachVector(F&& f)
{
    switch (m_kind) {
    case ValueKind::Text:
        f(m_texts);
        f(m_flags);
        break;
    case ValueKind::Real:
        f(m_reals);
        break;
    case ValueKind::Integer:
        f(m_ints);
        break;
    case ValueKind::Point:
        f(m_points);
        break;
    case ValueKind::Bool:
        f(m_flags);
        break;
    case ValueKind::None:
        break;
    }
}

void ColumnValues::assign(ValueKind kind, const QVariant& value)
{
    clear();
    m_kind = kind;
    m_rows = 1;
    forEachVector([](auto& v) { v.resize(1); });
    store(0, value);
}

void ColumnValues::read(const QAbstractItemModel* model, int column, int role, int row)
{
    store(row, model->data(model->index(row, column), role));
}

void ColumnValues::store(int row, const QVariant& value)
{
    const auto at = std::size_t(row);
    switch (m_kind) {
    case ValueKind::Text: {
        const QString text = value.toString();
        m_flags[at] = text.isEmpty();
        m_texts[at] = text.trimmed();
        break;
    }
    case ValueKind::Real:
        m_reals[at] = value.toDouble();
        break;
    case ValueKind::Integer:
        m_ints[at] = value.toInt();
        break;
    case ValueKind::Point:
        m_points[at] = value.toPointF();
        break;
    case ValueKind::Bool:
        m_flags[at] = value.toBool();
        break;
    case ValueKind::None:
        break;
    }
}

void ColumnValues::load(ValueKind kind, const QAbstractItemModel* model, int column, int role, int rows)
{
    clear();
    m_kind = kind;
    m_rows = rows;
    forEachVector([&](auto& v) { v.resize(std::size_t(rows)); });
    for (int row = 0; row < rows; ++row)
        read(model, column, role, row);
}

void ColumnValues::reload(const QAbstractItemModel* model, int column, int role, int first, int last)
{
    for (int row = first; row <= last && row < m_rows; ++row)
        read(model, column, role, row);
}

void ColumnValues::insert(const QAbstractItemModel* model, int column, int role, int first, int count)
{
    forEachVector([&](auto& v) {
        using Value = typename std::decay_t<decltype(v)>::value_type;
        v.insert(v.begin() + first, std::size_t(count), Value());
    });
    m_rows += count;
    reload(model, column, role, first, first + count - 1);
}

void ColumnValues::remove(int first, int count)
{
    forEachVector([&](auto& v) { v.erase(v.begin() + first, v.begin() + first + count); });
    m_rows -= count;
}

} // namespace FilterSupport
} // namespace QtUIBase

#include "FilterOracle.h"

#include <QAbstractItemModel>
#include <QPointF>
#include <QStringList>

namespace FilterOracle {

namespace {

bool textPasses(const QVariant& value, const QString& pattern, QRegExp::PatternSyntax syntax, Qt::CaseSensitivity cs)
{
    const QString text = value.toString();
    return text.isEmpty() || QRegExp(pattern, cs, syntax).indexIn(text.trimmed()) == 0;
}

bool conditionsPass(const QVariant& value, const QString& filter, bool integer)
{
    for (const QString& part : filter.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        QRegExp rx(QStringLiteral("([<>=])(.*)"));
        if (rx.indexIn(part) < 0)
            continue;
        const QString op = rx.cap(1);
        if (integer) {
            const int v = value.toInt();
            const int n = rx.cap(2).toInt(nullptr, 10);
            if ((op == "=" && v != n) || (op == "<" && v >= n) || (op == ">" && v <= n))
                return false;
        } else {
            const double v = value.toDouble();
            const double n = rx.cap(2).toDouble();
            if ((op == "=" && !(v == n)) || (op == "<" && v >= n) || (op == ">" && n >= v))
                return false;
        }
    }
    return true;
}

bool regionPasses(const QVariant& value, const QString& filter)
{
    QRegExp rx(QStringLiteral("([+-]?(\\d*\\.)?\\d+)"));
    double n[4];
    int pos = 0;
    for (double& x : n) {
        pos = rx.indexIn(filter, pos);
        if (pos < 0)
            return true;
        x = rx.cap(1).toDouble();
        pos += rx.matchedLength();
    }
    const QPointF p = value.toPointF();
    return !(n[0] > p.x() || n[1] > p.y() || p.x() > n[2] || p.y() > n[3]);
}

QStringList pieces(const QString& s)
{
    QStringList list;
    QRegExp digits(QStringLiteral("\\d+"));
    int pos = 0;
    int textStart = 0;
    while ((pos = digits.indexIn(s, pos)) != -1) {
        list << s.mid(textStart, pos - textStart) << digits.cap(0);
        pos += digits.matchedLength();
        textStart = pos;
    }
    if (textStart < s.size())
        list << s.mid(textStart);
    bool readsAsNumber = false;
    if (!list.isEmpty())
        list.first().toUInt(&readsAsNumber);
    if (!list.isEmpty() && !readsAsNumber)
        list.prepend(QStringLiteral("0"));
    return list;
}

} // namespace

bool multiAccepts(const QAbstractItemModel* model, int row, const QMap<int, QString>& filters, int role)
{
    for (auto it = filters.cbegin(); it != filters.cend(); ++it) {
        const QModelIndex index = model->index(row, it.key());
        if (!index.isValid() || it.value().isEmpty())
            continue;
        bool ok = false;
        int kind = model->headerData(it.key(), Qt::Horizontal, Qt::UserRole + 10).toInt(&ok);
        kind = ok ? kind : 0;
        const QVariant value = model->data(index, role);
        const QString& f = it.value();
        bool pass = true;
        if (kind == 0)
            pass = textPasses(value, f, QRegExp::RegExp, Qt::CaseInsensitive);
        else if (kind == 1 || kind == 2)
            pass = conditionsPass(value, f, kind == 2);
        else if (kind == 3)
            pass = regionPasses(value, f);
        else if (kind == 4)
            pass = !((value.toBool() && f == "FAIL") || (!value.toBool() && f == "PASS"));
        else if (kind == 5)
            pass = !((value.toBool() && f == "OFF") || (!value.toBool() && f == "ON"));
        if (!pass)
            return false;
    }
    return true;
}

bool orvexAccepts(const QAbstractItemModel* model, int row, int column, const QString& filter, bool caseSensitive)
{
    if (column < 0)
        return true;
    const QVariant value = model->data(model->index(row, column), Qt::DisplayRole);
    if (filter.contains(QRegExp(QStringLiteral("([<>=])(.*)"))))
        return conditionsPass(value, filter, false);
    const Qt::CaseSensitivity cs = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (filter.startsWith(QLatin1String("r ")))
        return textPasses(value, filter.mid(2).trimmed(), QRegExp::RegExp, cs);
    return textPasses(value, filter, QRegExp::Wildcard, cs);
}

bool naturalLessThan(const QString& a, const QString& b)
{
    const QStringList pa = pieces(a);
    const QStringList pb = pieces(b);
    for (int i = 0; i < std::max(pa.size(), pb.size()); ++i) {
        const QString x = pa.value(i);
        const QString y = pb.value(i);
        if (i % 2 == 0) {
            const auto u = qint32(x.toUInt());
            const auto v = qint32(y.toUInt());
            if (u != v)
                return u < v;
        } else if (x != y) {
            return x < y;
        }
    }
    return false;
}

} // namespace FilterOracle

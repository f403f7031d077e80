#include "FilterOracle.h"

#include <QAbstractItemModel>
#include <QPointF>
#include <QStandardItemModel>
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
        const QChar op = rx.cap(1).at(0);
        const double v = integer ? value.toInt() : value.toDouble();
        const double n = integer ? rx.cap(2).toInt(nullptr, 10) : rx.cap(2).toDouble();
        if ((op == '=' && !(v == n)) || (op == '<' && v >= n) || (op == '>' && n >= v))
            return false;
    }
    return true;
}

bool regionPasses(const QVariant& value, const QString& filter)
{
    QRegExp rx(QStringLiteral("([+-]?(\\d*\\.)?\\d+)"));
    double n[4];
    for (int i = 0, pos = 0; i < 4; ++i, pos += rx.matchedLength()) {
        if ((pos = rx.indexIn(filter, pos)) < 0)
            return true;
        n[i] = rx.cap(1).toDouble();
    }
    const QPointF p = value.toPointF();
    return !(n[0] > p.x() || n[1] > p.y() || p.x() > n[2] || p.y() > n[3]);
}

QStringList pieces(const QString& s)
{
    QStringList list;
    QRegExp digits(QStringLiteral("\\d+"));
    int textStart = 0;
    for (int pos = 0; (pos = digits.indexIn(s, pos)) != -1; textStart = pos += digits.matchedLength())
        list << s.mid(textStart, pos - textStart) << digits.cap(0);
    if (textStart < s.size())
        list << s.mid(textStart);
    bool readsAsNumber = false;
    list.value(0).toUInt(&readsAsNumber);
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
        const int kind = model->headerData(it.key(), Qt::Horizontal, Qt::UserRole + 10).toInt();
        const QVariant value = model->data(index, role);
        const QString& f = it.value();
        const bool truth = value.toBool();
        if ((kind == 0 && !textPasses(value, f, QRegExp::RegExp, Qt::CaseInsensitive))
            || ((kind == 1 || kind == 2) && !conditionsPass(value, f, kind == 2))
            || (kind == 3 && !regionPasses(value, f)) || (kind == 4 && f == (truth ? "FAIL" : "PASS"))
            || (kind == 5 && f == (truth ? "OFF" : "ON")))
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
        if (i % 2 == 0 && qint32(x.toUInt()) != qint32(y.toUInt()))
            return qint32(x.toUInt()) < qint32(y.toUInt());
        if (i % 2 == 1 && x != y)
            return x < y;
    }
    return false;
}

QStandardItemModel* table(const QList<int>& kinds, const QList<QVariantList>& rows, QObject* parent)
{
    auto* model = new QStandardItemModel(rows.size(), kinds.size(), parent);
    for (int c = 0; c < kinds.size(); ++c) {
        model->setHeaderData(c, Qt::Horizontal, kinds.at(c), Qt::DisplayRole);
        model->setHeaderData(c, Qt::Horizontal, kinds.at(c), Qt::UserRole + 10);
    }
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < kinds.size(); ++c)
            model->setData(model->index(r, c), rows.at(r).value(c));
    }
    return model;
}

QStringList firstColumn(const QAbstractItemModel* model)
{
    QStringList texts;
    for (int r = 0; r < model->rowCount(); ++r) {
        const QVariant v = model->index(r, 0).data();
        const QPointF p = v.toPointF();
        texts << (v.type() == QVariant::PointF ? QStringLiteral("%1;%2").arg(p.x()).arg(p.y()) : v.toString());
    }
    return texts;
}

} // namespace FilterOracle

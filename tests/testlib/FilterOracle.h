#pragma once

#include <QMap>
#include <QRegExp>
#include <QString>
#include <QVariantList>

class QAbstractItemModel;
class QStandardItemModel;

/// The sorting proxies' filtering and natural order evaluated the slow,
/// obvious way (a QRegExp per row and filter, pieces cut by QRegExp): what
/// their cached, compiled evaluation must answer exactly. And test tables.
namespace FilterOracle {

/// Whether @p row passes every AQSortMultiFilterProxyModel filter (by column).
bool multiAccepts(const QAbstractItemModel* model, int row, const QMap<int, QString>& filters, int role);

/// Whether top-level @p row passes an OrvexSortFilterProxyModel filter.
bool orvexAccepts(const QAbstractItemModel* model, int row, int column, const QString& filter, bool caseSensitive);

bool naturalLessThan(const QString& a, const QString& b);

/// One column per kind (published in the header's display role and in the
/// proxy's role) and @p rows of cells.
QStandardItemModel* table(const QList<int>& kinds, const QList<QVariantList>& rows, QObject* parent);
/// Column 0 of @p model as texts; points as "x;y".
QStringList firstColumn(const QAbstractItemModel* model);

} // namespace FilterOracle

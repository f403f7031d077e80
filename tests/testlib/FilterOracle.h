#pragma once

#include <QMap>
#include <QRegExp>
#include <QString>

class QAbstractItemModel;

/**
 * The filtering and natural order of the sorting proxies, evaluated the
 * slow, obvious way (a QRegExp built per row and filter, string pieces cut
 * with QRegExp): what the proxies' cached and compiled evaluation must
 * answer exactly.
 */
namespace FilterOracle {

/// Whether top-level @p row passes every filter (column -> text) of an
/// AQSortMultiFilterProxyModel reading cells in @p role.
bool multiAccepts(const QAbstractItemModel* model, int row, const QMap<int, QString>& filters, int role);

/// Whether top-level @p row passes an OrvexSortFilterProxyModel filter.
bool orvexAccepts(const QAbstractItemModel* model, int row, int column, const QString& filter, bool caseSensitive);

bool naturalLessThan(const QString& a, const QString& b);

} // namespace FilterOracle

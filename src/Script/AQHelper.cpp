#include "Script/AQHelper.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QFile>
#include <QHeaderView>
#include <QTableView>
#include <QTextStream>

namespace QtUIBase {

QString AQHelper::cellText(const QVariant& value)
{
    switch (static_cast<int>(value.type())) {
    case QMetaType::Bool:
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QByteArray:
        return value.toString();
    case QMetaType::Int:
        return QString::number(value.toInt());
    case QMetaType::UInt:
        return QString::number(value.toUInt());
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    case QMetaType::ULongLong:
        return QString::number(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return QString::number(value.toDouble(), 'g', 6);
    case QMetaType::QChar:
        return QString(value.toChar());
    case QMetaType::QColor:
        return value.value<QColor>().name();
    default:
        // Other types (dates, sizes, ...) as far as QVariant converts them.
        return value.toString();
    }
}

bool AQHelper::exportTableToCSV(const QTableView* view, const QString& fileName, const QString& separator)
{
    if (!view || fileName.isEmpty() || !view->model())
        return false;
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;

    const QAbstractItemModel* model = view->model();
    const QHeaderView* header = view->horizontalHeader();
    QVector<int> columns;
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (logical >= 0 && !header->isSectionHidden(logical))
            columns << logical;
    }

    QTextStream out(&file);
    QStringList cells;
    for (int column : qAsConst(columns))
        cells << model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    out << cells.join(separator) << '\n';
    for (int row = 0; row < model->rowCount(); ++row) {
        cells.clear();
        for (int column : qAsConst(columns))
            cells << cellText(model->index(row, column).data(Qt::DisplayRole));
        out << cells.join(separator) << '\n';
    }
    out.flush();
    return out.status() == QTextStream::Ok;
}

} // namespace QtUIBase

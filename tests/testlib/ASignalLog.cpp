#include "ASignalLog.h"

#include <QAction>
#include <QColor>
#include <QListWidgetItem>
#include <QMetaMethod>
#include <QModelIndex>
#include <QPoint>
#include <QTableWidgetItem>
#include <QTreeWidgetItem>
#include <QVariant>

namespace {

bool isApplicationSignal(const QMetaMethod& method)
{
    if (method.methodType() != QMetaMethod::Signal)
        return false;
    const QByteArray name = method.name();
    // Some wrappers keep Qt's lower-case letter after the "A" (AvalueChanged,
    // AtabBarClicked); Qt's own signals never start with a capital.
    return name.size() > 1 && name.at(0) == 'A' && QChar::isLetter(uint(name.at(1)));
}

template <typename Item>
QString itemText(void* data, QString (Item::*text)() const)
{
    const Item* item = *static_cast<Item**>(data);
    return item ? (item->*text)() : QStringLiteral("null");
}

QString argumentText(const QByteArray& typeName, int type, void* data)
{
    // Items, actions and indexes are logged by their texts.
    if (typeName == "QModelIndex") {
        const auto* index = static_cast<const QModelIndex*>(data);
        return index->isValid() ? index->data().toString() : QStringLiteral("invalid");
    }
    if (typeName == "QAction*")
        return itemText<QAction>(data, &QAction::text);
    if (typeName == "QListWidgetItem*")
        return itemText<QListWidgetItem>(data, &QListWidgetItem::text);
    if (typeName == "QTableWidgetItem*")
        return itemText<QTableWidgetItem>(data, &QTableWidgetItem::text);
    if (typeName == "QTreeWidgetItem*") {
        const auto* item = *static_cast<QTreeWidgetItem**>(data);
        return item ? item->text(0) : QStringLiteral("null");
    }
    if (typeName.startsWith("QList<"))
        return QString::number(static_cast<const QList<void*>*>(data)->size());
    const QVariant value(type, data);
    if (type == QMetaType::QColor)
        return value.value<QColor>().name();
    if (type == QMetaType::QPoint) {
        const QPoint p = value.toPoint();
        return QStringLiteral("%1;%2").arg(p.x()).arg(p.y());
    }
    return value.toString();
}

} // namespace

ASignalLog::ASignalLog(QObject* parent)
    : QObject(parent)
{
}

void ASignalLog::watch(QObject* object, const QStringList& except)
{
    const QMetaObject* meta = object->metaObject();
    const int slot = QObject::staticMetaObject.methodCount();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (isApplicationSignal(method) && !except.contains(QString::fromLatin1(method.name())))
            QMetaObject::connect(object, i, this, slot, Qt::DirectConnection);
    }
}

void ASignalLog::watchTree(QObject* root)
{
    watch(root);
    const auto children = root->findChildren<QObject*>();
    for (QObject* child : children)
        watch(child);
}

// Every watched signal arrives at the one method past QObject's own; the
// sender and its signal index tell them apart.
int ASignalLog::qt_metacall(QMetaObject::Call call, int id, void** args)
{
    id = QObject::qt_metacall(call, id, args);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    if (id == 0) {
        const QObject* from = sender();
        const QMetaMethod signal = from->metaObject()->method(senderSignalIndex());
        QStringList texts;
        for (int i = 0; i < signal.parameterCount(); ++i)
            texts << argumentText(signal.parameterTypes().at(i), signal.parameterType(i), args[i + 1]);
        m_entries << QStringLiteral("%1:%2(%3)")
                         .arg(from->objectName(), QString::fromLatin1(signal.name()), texts.join(QLatin1Char(',')));
    }
    return id - 1;
}

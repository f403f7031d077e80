#include "ASignalLog.h"

#include <QColor>
#include <QMetaMethod>
#include <QPoint>
#include <QVariant>

namespace {

bool isApplicationSignal(const QMetaMethod& method)
{
    if (method.methodType() != QMetaMethod::Signal)
        return false;
    const QByteArray name = method.name();
    return name.size() > 1 && name.at(0) == 'A' && (QChar::isUpper(uint(name.at(1))) || name.at(1) == 'v');
}

QString argumentText(int type, void* data)
{
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
            texts << argumentText(signal.parameterType(i), args[i + 1]);
        m_entries << QStringLiteral("%1:%2(%3)")
                         .arg(from->objectName(), QString::fromLatin1(signal.name()), texts.join(QLatin1Char(',')));
    }
    return id - 1;
}

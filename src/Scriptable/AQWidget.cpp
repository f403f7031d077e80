#include "Scriptable/AQWidget.h"

#include "Script/AQObjects.h"
#include "Script/AQRecordingGuard.h"
#include "Script/AQScripts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWheelEvent>

namespace QtUIBase {

namespace {

QString number(int value)
{
    return QString::number(value);
}

QString encodeText(const QString& text)
{
    QStringList codes;
    for (const QChar c : text)
        codes << number(c.unicode());
    return codes.join(QLatin1Char(','));
}

QString decodeText(const QString& codes)
{
    QString text;
    const QStringList parts = codes.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& code : parts)
        text += QChar(static_cast<char16_t>(code.toUInt()));
    return text;
}

} // namespace

AQWidget::AQWidget(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QWidget(parent, flags)
    , m_scriptable(scriptable)
{
    if (scriptable)
        AQObjects::add(this, name);
    else
        setObjectName(name);
}

void AQWidget::record(const char* name, const QStringList& args)
{
    if (m_scriptable)
        AQScripts::recordSignal(this, QString::fromLatin1(name), args);
}

void AQWidget::recordMouse(const char* name, const QMouseEvent* event, int buttons)
{
    record(name, {number(event->pos().x()), number(event->pos().y()), number(buttons),
                  number(static_cast<int>(event->modifiers()))});
}

void AQWidget::mousePressEvent(QMouseEvent* event)
{
    recordMouse("MousePress", event, event->button());
    QWidget::mousePressEvent(event);
}

void AQWidget::mouseReleaseEvent(QMouseEvent* event)
{
    recordMouse("MouseRelease", event, event->button());
    QWidget::mouseReleaseEvent(event);
}

void AQWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    recordMouse("MouseDblClick", event, event->button());
    // Qt turns an unhandled double click into a press; that press follows
    // from the double click and must not be replayed a second time.
    withRecordingSuppressed([this, event] { QWidget::mouseDoubleClickEvent(event); });
}

void AQWidget::mouseMoveEvent(QMouseEvent* event)
{
    recordMouse("MouseMove", event, static_cast<int>(event->buttons()));
    QWidget::mouseMoveEvent(event);
}

void AQWidget::wheelEvent(QWheelEvent* event)
{
    const QPoint pos = event->position().toPoint();
    record("MouseWheel", {number(pos.x()), number(pos.y()), number(event->angleDelta().y()),
                          number(static_cast<int>(event->modifiers()))});
    QWidget::wheelEvent(event);
}

void AQWidget::keyPressEvent(QKeyEvent* event)
{
    record("keyPressEvent",
           {number(event->key()), number(static_cast<int>(event->modifiers())), encodeText(event->text())});
    QWidget::keyPressEvent(event);
}

void AQWidget::dropEvent(QDropEvent* event)
{
    const QByteArray data = event->mimeData() ? event->mimeData()->data(QLatin1String(dragDataType())) : QByteArray();
    record("dropEvent",
           {number(event->pos().x()), number(event->pos().y()), QString::fromLatin1(data.toBase64())});
    QWidget::dropEvent(event);
}

void AQWidget::closeEvent(QCloseEvent* event)
{
    record("closeEvent", {QString()});
    QWidget::closeEvent(event);
}

void AQWidget::changeEvent(QEvent* event)
{
    // Other changes (fonts, palette, activation) follow from the operations
    // that cause them and are not operations of their own.
    if (event->type() == QEvent::WindowStateChange)
        record("changeEvent", {number(static_cast<int>(windowState()))});
    QWidget::changeEvent(event);
}

void AQWidget::replayMouse(int type, const QStringList& args)
{
    const QPoint pos(args.at(0).toInt(), args.at(1).toInt());
    const int buttonArg = args.at(2).toInt();
    const auto modifiers = Qt::KeyboardModifiers(args.at(3).toInt());
    const auto eventType = static_cast<QEvent::Type>(type);
    const Qt::MouseButton button = eventType == QEvent::MouseMove ? Qt::NoButton : Qt::MouseButton(buttonArg);
    const Qt::MouseButtons buttons = eventType == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(buttonArg);
    QMouseEvent event(eventType, pos, mapToGlobal(pos), button, buttons, modifiers);
    QCoreApplication::sendEvent(this, &event);
}

void AQWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    if (args.size() == 4) {
        if (signal == QLatin1String("MousePress"))
            return replayMouse(QEvent::MouseButtonPress, args);
        if (signal == QLatin1String("MouseRelease"))
            return replayMouse(QEvent::MouseButtonRelease, args);
        if (signal == QLatin1String("MouseDblClick"))
            return replayMouse(QEvent::MouseButtonDblClick, args);
        if (signal == QLatin1String("MouseMove"))
            return replayMouse(QEvent::MouseMove, args);
        if (signal == QLatin1String("MouseWheel")) {
            const QPoint pos(args.at(0).toInt(), args.at(1).toInt());
            QWheelEvent event(pos, mapToGlobal(pos), QPoint(), QPoint(0, args.at(2).toInt()), Qt::NoButton,
                              Qt::KeyboardModifiers(args.at(3).toInt()), Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(this, &event);
            return;
        }
    }
    if (signal == QLatin1String("keyPressEvent") && (args.size() == 2 || args.size() == 3)) {
        QKeyEvent event(QEvent::KeyPress, args.at(0).toInt(), Qt::KeyboardModifiers(args.at(1).toInt()),
                        args.size() == 3 ? decodeText(args.at(2)) : QString());
        QCoreApplication::sendEvent(this, &event);
    } else if (signal == QLatin1String("dropEvent") && (args.size() == 2 || args.size() == 3)) {
        QMimeData mime;
        if (args.size() == 3)
            mime.setData(QLatin1String(dragDataType()), QByteArray::fromBase64(args.at(2).toLatin1()));
        QDropEvent event(QPointF(args.at(0).toInt(), args.at(1).toInt()), Qt::CopyAction | Qt::MoveAction, &mime,
                         Qt::NoButton, Qt::NoModifier);
        // The application passes drop events on only during a real drag, so
        // the replayed drop is handed to the handler itself.
        dropEvent(&event);
    } else if (signal == QLatin1String("closeEvent") && args.isEmpty()) {
        close();
    } else if (signal == QLatin1String("changeEvent") && args.size() == 1) {
        setWindowState(Qt::WindowStates(args.at(0).toInt()));
    }
}

} // namespace QtUIBase

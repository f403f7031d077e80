#include "Settings/AQSettings.h"

#include <QCursor>
#include <QDialog>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QWindow>

namespace QtUIBase {

QString AQSettings::m_fileName;
QString AQSettings::m_LayoutfileName;
QMainWindow* AQSettings::m_mainWdw = nullptr;
QPoint AQSettings::m_windowLeftRectPoint;
QPoint AQSettings::m_windowHoopsViewLeftPoint;
QString AQSettings::m_srcFilePath;
QMap<QString, QVector<int>> AQSettings::m_recordCount;
QMap<QString, QVector<int>> AQSettings::m_replayCount;
QList<QString> AQSettings::m_totalWindLayList;

AQSettings::AQSettings() = default;

AQSettings::AQSettings(const QString& stateIniPath, const QString& layoutIniPath)
{
    m_fileName = stateIniPath;
    m_LayoutfileName = layoutIniPath;
}

AQSettings::AQSettings(const QString& application)
    : QSettings(QSettings::UserScope, organisationPath(), application)
{
}

AQSettings::AQSettings(const QString& fileName, QSettings::Format format, QObject* parent)
    : QSettings(fileName, format, parent)
{
}

AQSettings::AQSettings(QSettings::Scope scope, const QString& organisation, const QString& application,
                       QObject* parent)
    : QSettings(scope, organisation, application, parent)
{
}

QString AQSettings::organisationPath()
{
    static const QString path = QStringLiteral("Halvren\\%1\\%2").arg(QStringLiteral("1.0.0"), QStringLiteral("MCAD"));
    return path;
}

QVariant AQSettings::GetValue(const QString& key, const QVariant& defaultValue) const
{
    return value(key, defaultValue);
}

void AQSettings::SetValue(const QString& key, const QVariant& value)
{
    setValue(key, value);
}

namespace {

const QString& positionKey()
{
    static const QString key = QStringLiteral("Position");
    return key;
}

const QString& sizeKey()
{
    static const QString key = QStringLiteral("Size");
    return key;
}

const QString& geometryKey()
{
    static const QString key = QStringLiteral("geometry");
    return key;
}

const QString& layoutKey()
{
    static const QString key = QStringLiteral("Layout");
    return key;
}

QScreen* primaryScreen()
{
    return QGuiApplication::primaryScreen();
}

QScreen* screenUnderCursor()
{
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : primaryScreen();
}

QRect availableArea(const QScreen* screen)
{
    return screen ? screen->availableGeometry() : QRect();
}

// Writes the place and size of a dialog, widget or dock widget.
void savePlace(QSettings& settings, const QString& name, const QPoint& position, const QSize& size)
{
    settings.beginGroup(name);
    settings.setValue(positionKey(), position);
    settings.setValue(sizeKey(), size);
    settings.endGroup();
}

} // namespace

bool AQSettings::withStateIni(const std::function<void(AQSettings&)>& f)
{
    if (m_fileName.isEmpty())
        return false;
    AQSettings settings(m_fileName, QSettings::IniFormat);
    f(settings);
    return true;
}

void AQSettings::saveState(const QDialog& dialog, const QString& name)
{
    savePlace(*this, name, dialog.pos(), dialog.size());
}

void AQSettings::saveState(const QWidget& widget, const QString& name)
{
    savePlace(*this, name, widget.pos(), widget.size());
}

void AQSettings::saveState(const QDockWidget& dock, const QString& name)
{
    savePlace(*this, name, dock.pos(), dock.size());
}

void AQSettings::saveState(const QMainWindow& window, const QString& name)
{
    beginGroup(name);
    setValue(geometryKey(), window.saveGeometry());
    setValue(layoutKey(), window.saveState(0));
    endGroup();
}

void AQSettings::restoreState(const QString& name, QDockWidget& dock)
{
    restorePlace(name, dock);
}

void AQSettings::restoreFixedState(const QString& name, QMainWindow& window)
{
    restorePlace(name, window);
}

void AQSettings::restorePlace(const QString& name, QWidget& widget)
{
    beginGroup(name);
    if (contains(sizeKey()))
        widget.resize(value(sizeKey()).toSize());
    if (contains(positionKey()))
        widget.move(value(positionKey()).toPoint());
    endGroup();
}

void AQSettings::restoreState(const QString& name, QWidget& widget)
{
    beginGroup(name);
    if (contains(sizeKey()))
        widget.resize(value(sizeKey()).toSize());
    const QPoint position = value(positionKey(), QPoint(0, 0)).toPoint();
    endGroup();
    widget.move(position == QPoint(0, 0) ? m_windowLeftRectPoint : position);
}

void AQSettings::restoreState(const QString& name, QDialog& dialog)
{
    beginGroup(name);
    if (contains(sizeKey()))
        dialog.resize(value(sizeKey()).toSize());
    const QPoint position = value(positionKey(), QPoint(0, 0)).toPoint();
    endGroup();

    QScreen* cursorScreen = screenUnderCursor();
    QScreen* primary = primaryScreen();
    if (!cursorScreen)
        return; // no screen at all: nothing to place on
    if (position != QPoint(0, 0)) {
        const QRect placed = placeDialog(position, dialog.size(), cursorScreen->geometry());
        if (placed.size() != dialog.size())
            dialog.resize(placed.size());
        dialog.move(placed.topLeft());
    } else if (name == QLatin1String("FilterFeatureWidget")) {
        dialog.move(quarterPoint(availableArea(primary)));
    } else if (cursorScreen == primary) {
        // Never placed before: open over the application's 3-D view.
        dialog.move(m_windowHoopsViewLeftPoint);
    }
}

void AQSettings::restoreState(const QString& name, QMainWindow& window)
{
    beginGroup(name);
    const QByteArray geometry = value(geometryKey()).toByteArray();
    if (!geometry.isEmpty()) {
        window.restoreGeometry(geometry);
    } else {
        const QRect rect = defaultMainWindowRect(availableArea(primaryScreen()));
        window.resize(rect.size());
        window.move(rect.topLeft());
    }
    if (contains(layoutKey()))
        window.restoreState(value(layoutKey()).toByteArray(), 0);
    endGroup();
    m_mainWdw = &window;
}

void AQSettings::saveFixedSizeDpiFlag(const QString& name)
{
    savePlace(*this, name, QPoint(440, 220), QSize(1680, 1050));
}

void AQSettings::sanityCheckDock(QDockWidget* dock)
{
    if (!dock)
        return;
    const QWindow* handle = dock->windowHandle();
    QScreen* screen = handle ? handle->screen() : QGuiApplication::screenAt(dock->pos());
    if (!screen)
        screen = primaryScreen();
    if (!screen)
        return;

    const QRect frame(dock->pos(), dock->frameSize());
    const QRect fitted = keepDockFrameOnScreen(frame, screen->availableGeometry(), screen->availableVirtualGeometry());
    if (fitted.width() != frame.width())
        dock->resize(fitted.width(), dock->height());
    if (fitted.height() != frame.height()) {
        const int titleBar = frame.height() - dock->height();
        dock->resize(dock->width(), fitted.height() - titleBar);
    }
    if (fitted.topLeft() != frame.topLeft())
        dock->move(fitted.topLeft());
}

QRect AQSettings::defaultMainWindowRect(const QRect& available)
{
    const int width = available.width() < 1000 ? static_cast<int>(available.width() * 0.8) : 1000;
    const int height = available.height() < 800 ? static_cast<int>(available.height() * 0.8) : 800;
    return QRect(available.width() / 2 - width / 2, available.height() / 2 - height / 2, width, height);
}

QRect AQSettings::placeDialog(const QPoint& position, const QSize& size, const QRect& screen)
{
    QRect placed(position, size);
    if (!screen.contains(placed)) {
        placed.moveTopLeft(screen.topLeft());
        // Still outside: the dialog is larger than the screen.
        if (!screen.contains(placed))
            placed.setSize(screen.size());
    }
    return placed;
}

QPoint AQSettings::quarterPoint(const QRect& available)
{
    return QPoint(available.width() / 4, available.height() / 4);
}

QRect AQSettings::keepDockFrameOnScreen(const QRect& frame, const QRect& available, const QRect& desktop)
{
    QRect f = frame;
    const QRect& a = available;
    if (!a.contains(f.topLeft())) {
        if (f.top() < a.top())
            f.moveTop(a.top());
        else if (f.top() > a.bottom())
            f.moveTop(a.y() + a.height() - 20); // leaves the title bar to grab
        if (f.left() < a.left())
            f.moveLeft(a.left());
        else if (f.left() > a.right())
            f.moveLeft(a.x() + a.width() - f.width());
    }
    if (!desktop.contains(f)) {
        if (f.right() > a.right()) {
            if (f.width() >= a.width()) {
                f.setLeft(a.left());
                f.setWidth(a.width());
            } else {
                f.moveRight(a.right());
            }
        }
        if (f.bottom() > a.bottom()) {
            if (f.height() >= a.height()) {
                f.setTop(a.top());
                f.setHeight(a.height());
            } else {
                f.moveBottom(a.bottom());
            }
        }
    }
    return f;
}

} // namespace QtUIBase

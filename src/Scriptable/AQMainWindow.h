#pragma once

#include "OrvexQtUIBase_export.h"

#include <QMainWindow>

namespace QtUIBase {

/**
 * A scriptable QMainWindow.
 *
 * Every new main window becomes _getMainWindow() (cleared again when that
 * window is destroyed). The unnamed constructor registers under
 * "MainWindow"; the named one under its name, which is also the group of
 * the window's entry in the state INI file ("geometry" and "Layout"),
 * written on close and by saveMainWindowState(), read by
 * restoreMainWindowState(). Without a name the object name is the group.
 *
 * Building a window suppresses recording; the named constructor leaves it
 * allowed while a script is being recorded.
 */
class ORVEXQTUIBASE_EXPORT AQMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit AQMainWindow(QWidget* parent = nullptr, Qt::WindowFlags flags = {}, bool scriptable = true);
    AQMainWindow(const char* name, QWidget* parent, Qt::WindowFlags flags, bool scriptable);
    ~AQMainWindow() override;

    static AQMainWindow* _getMainWindow() { return _mainWindow; }

    /// Unregisters the window, then closes it.
    bool close();
    /// Group of the window's entry in the state INI file.
    QString windowName() const;

public Q_SLOTS:
    void restoreMainWindowState();
    void saveMainWindowState(bool sync);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QString m_name;
    static AQMainWindow* _mainWindow;
};

} // namespace QtUIBase

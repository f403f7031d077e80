#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QWidget>

namespace QtUIBase {

/**
 * A scriptable plain QWidget.
 *
 * Operations done on the widget itself are recorded under these names, with
 * decimal arguments (positions are widget-local; buttons, modifiers and
 * window states are the Qt flag values):
 *
 * | Record          | Arguments                                          |
 * |-----------------|----------------------------------------------------|
 * | "MousePress"    | x y button modifiers                               |
 * | "MouseRelease"  | x y button modifiers                               |
 * | "MouseDblClick" | x y button modifiers                               |
 * | "MouseMove"     | x y buttons modifiers                              |
 * | "MouseWheel"    | x y verticalAngleDelta modifiers                   |
 * | "keyPressEvent" | key modifiers [text as comma-separated char codes] |
 * | "dropEvent"     | x y [the "application/x-dnditemdata" bytes, base64]|
 * | "closeEvent"    | none                                               |
 * | "changeEvent"   | windowState (window-state changes only)            |
 *
 * Replay sends the same event to the widget again ("closeEvent" closes it,
 * "changeEvent" sets the window state), so a subclass's event handlers run
 * alike for the user and for a script. Unknown names and wrong argument
 * counts are ignored.
 *
 * Not scriptable: the widget only takes @p name as its object name and
 * records nothing.
 */
class ORVEXQTUIBASE_EXPORT AQWidget : public QWidget, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQWidget(const QString& name, QWidget* parent = nullptr, Qt::WindowFlags flags = {},
                      bool scriptable = true);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

    /// Mime type whose data a drop records.
    static const char* dragDataType() { return "application/x-dnditemdata"; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void record(const char* name, const QStringList& args);
    void recordMouse(const char* name, const QMouseEvent* event, int buttons);
    void replayMouse(int type, const QStringList& args);

    bool m_scriptable = false;
};

} // namespace QtUIBase

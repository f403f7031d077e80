#pragma once

#include "OrvexQtUIBase_export.h"

#include <QList>
#include <QMap>
#include <QPoint>
#include <QRect>
#include <QSettings>
#include <QString>
#include <QVector>

#include <functional>

class QDialog;
class QDockWidget;
class QMainWindow;
class QWidget;

namespace QtUIBase {

/**
 * QSettings with the product's organisation path, plus the process-wide
 * facts the scripting engine and the windows read: the state and layout INI
 * paths, the script path of the current record or replay run and its
 * counters.
 *
 * The saveState()/restoreState() routines keep windows in an INI file
 * (normally the state INI file, see withStateIni()), one group per window
 * name: "Position" and "Size" for dialogs, widgets and dock widgets,
 * "geometry" and "Layout" for main windows. Missing keys leave a window
 * where it is, or at the defaults described per routine. restoreState() of
 * a main window remembers it as getMainWindow().
 *
 * The placement arithmetic is available as pure functions of the screen
 * rectangles, so that it does not depend on the machine's screens.
 */
class ORVEXQTUIBASE_EXPORT AQSettings : public QSettings
{
    Q_OBJECT

public:
    AQSettings();
    /// Records the two INI paths for the whole process (the host calls this
    /// once at start-up).
    AQSettings(const QString& stateIniPath, const QString& layoutIniPath);
    /// User scope, organisation path "Halvren\1.0.0\MCAD", @p application.
    explicit AQSettings(const QString& application);
    AQSettings(const QString& fileName, QSettings::Format format, QObject* parent = nullptr);
    AQSettings(QSettings::Scope scope, const QString& organisation, const QString& application,
               QObject* parent = nullptr);

    /// "Halvren\1.0.0\MCAD".
    static QString organisationPath();

    QVariant GetValue(const QString& key, const QVariant& defaultValue = QVariant()) const;
    void SetValue(const QString& key, const QVariant& value);

    /// Runs @p f on the state INI file; does nothing while no state INI
    /// path has been handed in. Answers whether @p f ran.
    static bool withStateIni(const std::function<void(AQSettings&)>& f);

    // --- state routines ------------------------------------------------------
    void saveState(const QDialog& dialog, const QString& name);
    void saveState(const QWidget& widget, const QString& name);
    void saveState(const QDockWidget& dock, const QString& name);
    void saveState(const QMainWindow& window, const QString& name);
    /// Resizes to "Size" and moves to "Position" where present.
    void restoreState(const QString& name, QDockWidget& dock);
    /// The dock routine's rule for a main window: the fixed size and place
    /// written by saveFixedSizeDpiFlag() before a script is replayed.
    void restoreFixedState(const QString& name, QMainWindow& window);
    /// Resizes to "Size"; a stored (0,0) or missing "Position" places the
    /// widget at the view anchor set by setWdwViewLeftRectPoint().
    void restoreState(const QString& name, QWidget& widget);
    /// Keeps the dialog on the screen under the cursor (see placeDialog());
    /// without a stored position "FilterFeatureWidget" goes to a quarter of
    /// the desktop, other dialogs to the 3-D view anchor when the cursor is
    /// on the primary screen, and stay where Qt puts them otherwise.
    void restoreState(const QString& name, QDialog& dialog);
    /// Restores "geometry" or, when none is stored, centres the window at
    /// defaultMainWindowRect(); then "Layout". Remembers the window.
    void restoreState(const QString& name, QMainWindow& window);
    /// Writes the fixed place (440,220) and size 1680x1050 under @p name,
    /// the window size scripts are recorded and replayed at.
    void saveFixedSizeDpiFlag(const QString& name);
    /// Keeps a dock widget's frame on its screen (nothing for null).
    static void sanityCheckDock(QDockWidget* dock);

    // --- placement arithmetic ---------------------------------------------------
    /// Default main window: 1000x800 (0.8 of a smaller available dimension)
    /// centred on @p available.
    static QRect defaultMainWindowRect(const QRect& available);
    /// Where a dialog of @p size stored at @p position goes on @p screen:
    /// unchanged when it fits, else at the screen's top-left, and with the
    /// screen's size when it is larger than the screen.
    static QRect placeDialog(const QPoint& position, const QSize& size, const QRect& screen);
    /// Default position of "FilterFeatureWidget": a quarter of the area.
    static QPoint quarterPoint(const QRect& available);
    /// Frame of a dock moved (and where it cannot fit, narrowed or
    /// shortened) to stay on @p available; @p desktop is the whole
    /// available desktop.
    static QRect keepDockFrameOnScreen(const QRect& frame, const QRect& available, const QRect& desktop);

    static QString getStateIniPath() { return m_fileName; }
    static QString getWindowLayoutIniPath() { return m_LayoutfileName; }
    static QMainWindow* getMainWindow() { return m_mainWdw; }

    static void setWdwViewLeftRectPoint(QPoint& point) { m_windowLeftRectPoint = point; }
    static void setWdwHoopsViewLeftRectPoint(QPoint& point) { m_windowHoopsViewLeftPoint = point; }

    static void setUIAScriptPath(QString& path) { m_srcFilePath = path; }
    static QString getUIAScriptPath() { return m_srcFilePath; }
    static void setUIARecordCount(const QMap<QString, QVector<int>>& counts) { m_recordCount = counts; }
    static QMap<QString, QVector<int>> getUIARecordCount() { return m_recordCount; }
    static void setUIAReplayCount(const QMap<QString, QVector<int>>& counts) { m_replayCount = counts; }
    static QMap<QString, QVector<int>>& getUIAReplayCount() { return m_replayCount; }
    static void setWindowLayout(const QString& layout) { m_totalWindLayList.append(layout); }
    static QList<QString> getWindowLayout() { return m_totalWindLayList; }

protected:
    // Resizes to "Size" and moves to "Position" where present.
    void restorePlace(const QString& name, QWidget& widget);

    static QString m_fileName;
    static QString m_LayoutfileName;
    static QMainWindow* m_mainWdw;
    static QPoint m_windowLeftRectPoint;
    static QPoint m_windowHoopsViewLeftPoint;
    static QString m_srcFilePath;
    static QMap<QString, QVector<int>> m_recordCount;
    static QMap<QString, QVector<int>> m_replayCount;
    static QList<QString> m_totalWindLayList;
};

} // namespace QtUIBase

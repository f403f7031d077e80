#pragma once

#include "OrvexQtUIBase_export.h"

#include <QList>
#include <QMap>
#include <QPoint>
#include <QSettings>
#include <QString>
#include <QVector>

class QMainWindow;

namespace QtUIBase {

/**
 * QSettings with the product's organisation path, plus the process-wide
 * facts the scripting engine and the windows read: the state and layout INI
 * paths, the script path of the current record or replay run and its
 * counters.
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

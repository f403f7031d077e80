#include "SettingsSandbox.h"

#include <Settings/AQSettings.h>

#include <QSettings>
#include <QStandardPaths>

using namespace QtUIBase;

SettingsSandbox::SettingsSandbox()
{
    QStandardPaths::setTestModeEnabled(true);
    for (const QSettings::Format format : {QSettings::NativeFormat, QSettings::IniFormat}) {
        QSettings::setPath(format, QSettings::UserScope, m_dir.filePath(QStringLiteral("user")));
        QSettings::setPath(format, QSettings::SystemScope, m_dir.filePath(QStringLiteral("system")));
    }
    const AQSettings paths(stateIniPath(), m_dir.filePath(QStringLiteral("layout.ini")));
}

QString SettingsSandbox::stateIniPath() const
{
    return m_dir.filePath(QStringLiteral("state.ini"));
}

void SettingsSandbox::clear() const
{
    AQSettings(QStringLiteral("Main")).clear();
    QSettings(stateIniPath(), QSettings::IniFormat).clear();
}

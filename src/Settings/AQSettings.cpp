#include "Settings/AQSettings.h"

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

} // namespace QtUIBase

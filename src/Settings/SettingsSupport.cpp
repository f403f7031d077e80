#include "Settings/SettingsSupport.h"

#include "Script/AQRecordingGuard.h"
#include "Script/AQScriptBackend.h"
#include "Settings/AQSettings.h"

namespace QtUIBase {
namespace Pvt {

namespace {

const QString& sizeAndPosKey()
{
    static const QString key = QStringLiteral("SizeAndPos");
    return key;
}

bool scriptRunning()
{
    return AQIsScriptRecordActive() || AQIsScriptReplayActive();
}

} // namespace

SettingsSupport::~SettingsSupport() = default;

void SettingsSupport::RestoreSettings(QSettings&) {}

void SettingsSupport::SaveSettings(QSettings&) const {}

const char* SettingsSupport::subProductName() const
{
    return "Main";
}

void SettingsSupport::restoreGeometryAndSettings()
{
    AQSettings settings(QString::fromLatin1(subProductName()));
    // Restoring moves and resizes the window: none of that is a user operation.
    AQRecordingGuard suppress(false);
    settings.beginGroup(QString::fromLatin1(instanceNameForSettings()));
    if (!scriptRunning())
        RestoreSettings(settings);
    restoreGeoms(settings, settings.value(sizeAndPosKey()));
    settings.endGroup();
}

void SettingsSupport::saveGeometryAndSettings(bool skipOwnSettings) const
{
    AQSettings settings(QString::fromLatin1(subProductName()));
    settings.beginGroup(QString::fromLatin1(instanceNameForSettings()));
    if (!scriptRunning() && !skipOwnSettings)
        SaveSettings(settings);
    const QByteArray geometry = saveGeoms(settings);
    if (!geometry.isEmpty())
        settings.setValue(sizeAndPosKey(), geometry);
    settings.endGroup();
}

} // namespace Pvt
} // namespace QtUIBase

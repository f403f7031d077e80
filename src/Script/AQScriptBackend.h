#pragma once

#include "OrvexQtUIBase_export.h"

#include <QString>
#include <QStringList>

namespace QtUIBase {

/**
 * The installable table behind the script backend functions below.
 *
 * Widgets, dialogs and the host reach the recording and replay engine only
 * through these functions, so a host may bring an engine of its own. While a
 * pointer is null its function does nothing and answers false, an empty
 * string or an empty list. AQInitializeNonVelmoraScripting() fills every
 * pointer with the built-in engine.
 */
struct AQScriptBackendHooks
{
    bool (*isScriptRecordActive)() = nullptr;
    bool (*isScriptReplayActive)() = nullptr;
    bool (*isSaveDialogPosition)() = nullptr;
    void (*writeToScript)(const QString& line) = nullptr;
    void (*closeJrlScriptFile)(const QString& text) = nullptr;
    QStringList (*getNextLineFromScript)() = nullptr;
    bool (*openScriptFileForRecord)(const QString& file, const QString& version) = nullptr;
    void (*stopScriptRecording)() = nullptr;
    void (*stopScriptReplay)() = nullptr;
    bool (*openScriptFileForReplay)(const QString& file, int interval, int version) = nullptr;
    QString (*getScriptFileName)() = nullptr;
};

/// Replaces the whole hook table (an empty table disconnects the engine).
ORVEXQTUIBASE_EXPORT void AQSetScriptBackendHooks(const AQScriptBackendHooks& hooks);
ORVEXQTUIBASE_EXPORT const AQScriptBackendHooks& AQScriptBackend();

ORVEXQTUIBASE_EXPORT bool AQIsScriptRecordActive();
ORVEXQTUIBASE_EXPORT bool AQIsScriptReplayActive();
ORVEXQTUIBASE_EXPORT bool AQIsSaveDialogPosition();
ORVEXQTUIBASE_EXPORT void AQWriteToScript(const QString& line);
ORVEXQTUIBASE_EXPORT void AQCloseJrlScriptFile(const QString& text);
ORVEXQTUIBASE_EXPORT QStringList AQGetNextLineFromScript();
ORVEXQTUIBASE_EXPORT bool AQOpenScriptFileForRecord(const QString& file, const QString& version);
ORVEXQTUIBASE_EXPORT void AQStopScriptRecording();
ORVEXQTUIBASE_EXPORT void AQStopScriptReplay();
ORVEXQTUIBASE_EXPORT bool AQOpenScriptFileForReplay(const QString& file, int interval, int version);
ORVEXQTUIBASE_EXPORT QString AQGetScriptFileName();

} // namespace QtUIBase

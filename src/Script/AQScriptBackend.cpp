#include "Script/AQScriptBackend.h"

namespace QtUIBase {

namespace {
AQScriptBackendHooks g_hooks;

// Calls a hook when it is set; otherwise answers the type's empty value.
template <typename Result, typename... Hook, typename... Args>
Result callHook(Result (*hook)(Hook...), Args&&... args)
{
    if (!hook)
        return Result();
    return hook(std::forward<Args>(args)...);
}
} // namespace

void AQSetScriptBackendHooks(const AQScriptBackendHooks& hooks)
{
    g_hooks = hooks;
}

const AQScriptBackendHooks& AQScriptBackend()
{
    return g_hooks;
}

bool AQIsScriptRecordActive() { return callHook(g_hooks.isScriptRecordActive); }
bool AQIsScriptReplayActive() { return callHook(g_hooks.isScriptReplayActive); }
bool AQIsSaveDialogPosition() { return callHook(g_hooks.isSaveDialogPosition); }
void AQWriteToScript(const QString& line) { callHook(g_hooks.writeToScript, line); }
void AQCloseJrlScriptFile(const QString& text) { callHook(g_hooks.closeJrlScriptFile, text); }
QStringList AQGetNextLineFromScript() { return callHook(g_hooks.getNextLineFromScript); }
bool AQOpenScriptFileForRecord(const QString& file, const QString& version)
{
    return callHook(g_hooks.openScriptFileForRecord, file, version);
}
void AQStopScriptRecording() { callHook(g_hooks.stopScriptRecording); }
void AQStopScriptReplay() { callHook(g_hooks.stopScriptReplay); }
bool AQOpenScriptFileForReplay(const QString& file, int interval, int version)
{
    return callHook(g_hooks.openScriptFileForReplay, file, interval, version);
}
QString AQGetScriptFileName() { return callHook(g_hooks.getScriptFileName); }

} // namespace QtUIBase

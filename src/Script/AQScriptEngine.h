#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/AQScriptBackend.h"

#include <functional>
#include <string>

namespace QtUIBase {

/**
 * Installs the built-in script engine into every backend hook and opens the
 * journal. Without @p useHostJournal the journal is @p baseName + ".jrl",
 * opened (truncated) when @p openJournal is set and begun with a
 * "Journal start - " line; a journal that cannot be created is reported in
 * an "Error" box and scripting goes on without it. With @p useHostJournal
 * no file is opened and lines go to the function set by
 * AQSetJournalRecordFunc(). Replayed commands are echoed to the journal from
 * then on.
 */
ORVEXQTUIBASE_EXPORT void AQInitializeNonVelmoraScripting(const char* baseName, bool useHostJournal, bool openJournal);
/// The built-in engine's hook table.
ORVEXQTUIBASE_EXPORT AQScriptBackendHooks AQBuiltinScriptBackendHooks();
ORVEXQTUIBASE_EXPORT void AQSetJournalRecordFunc(void (*func)(void*, int, int, const char*));
/// Stops recording and ends the journal with its "Journal end - " line.
ORVEXQTUIBASE_EXPORT void AQCloseScript();
/// Drops the replay-active state without closing anything.
ORVEXQTUIBASE_EXPORT void AQResetReplayState();
/// Passes @p line to the built-in writer directly.
ORVEXQTUIBASE_EXPORT void AQSetCommandtoScript(const std::string& line);
/// Reports the result of a host command: a failure ends the journal with
/// "error info:" + @p message, after which the journal takes nothing more.
ORVEXQTUIBASE_EXPORT void AQSetScriptCommandResult(bool ok, const std::string& message);

/// Called by the built-in replay after each line it has read, with the
/// 1-based line number and the number of lines of the script; lets a host
/// show the progress of a replay. An empty function switches it off.
ORVEXQTUIBASE_EXPORT void AQSetReplayProgressFunc(std::function<void(int line, int total)> func);

} // namespace QtUIBase

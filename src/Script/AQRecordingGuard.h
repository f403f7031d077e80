#pragma once

#include "Script/AQScripts.h"

namespace QtUIBase {

/**
 * Saves the recording permission, sets it for the guard's scope and restores
 * it at scope exit: a balanced AQScripts::recordingAllowed() /
 * AQScripts::restoreRecordingAllowed() pair. Suppressing is the default,
 * which is what wrappers need around their A-signal emissions.
 *
 * Places that push and pop unevenly on purpose call AQScripts directly, so
 * that the imbalance stays visible.
 */
class AQRecordingGuard
{
public:
    explicit AQRecordingGuard(bool allowed = false) { AQScripts::recordingAllowed(allowed); }
    ~AQRecordingGuard() { AQScripts::restoreRecordingAllowed(); }

    AQRecordingGuard(const AQRecordingGuard&) = delete;
    AQRecordingGuard& operator=(const AQRecordingGuard&) = delete;
};

/// Runs @p f with recording suppressed.
template <typename F>
void withRecordingSuppressed(F&& f)
{
    AQRecordingGuard guard(false);
    f();
}

} // namespace QtUIBase

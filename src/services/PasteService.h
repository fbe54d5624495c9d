#pragma once

#include "base/Clock.h"
#include "base/Lifetime.h"
#include "platform/EventPoster.h"
#include "platform/ScriptingService.h"
#include "platform/UnifiedLog.h"

/// Makes the program in front receive "paste", and keeps the log of that. It writes no pasteboard, waits for
/// nothing and chooses no target. Main thread only.
class PasteService
{
public:
    /// Everything must outlive it. The log file is appended to, and made when it is missing.
    PasteService(EventPoster &poster, ScriptingService &scripting, UnifiedLog &unifiedLog, const Clock &clock,
        QString logFilePath);

    /// `larkspool_debug.log` in the user's home folder.
    static QString defaultLogFilePath();

    /// Appends "[2026-03-01 09:05:07 +0000] " (UTC), the message and a line feed to the log file, and to the
    /// system's log. A log that cannot be written is done without.
    void log(const QString &message);

    /// Posts the paste chord to the program in front; where events are not permitted, asks the desktop's
    /// scripting service to press it.
    void simulatePaste();

private:
    void performCGEventPaste();
    void pasteViaAppleScript();

    EventPoster &m_poster;
    ScriptingService &m_scripting;
    UnifiedLog &m_unifiedLog;
    const Clock &m_clock;
    QString m_logFilePath;
    Lifetime m_lifetime;
};

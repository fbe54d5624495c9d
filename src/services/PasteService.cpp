#include "services/PasteService.h"

#include <QDir>
#include <QFile>

namespace
{

constexpr quint16 KeyCodeV = 9;
constexpr int CombinedSessionState = 0;

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

const QString &pasteScript()
{
    static const QString Script = QStringLiteral("tell application \"System Events\"\n"
                                                 "    keystroke \"v\" using command down\n"
                                                 "end tell");
    return Script;
}

} // namespace

PasteService::PasteService(EventPoster &poster, ScriptingService &scripting, UnifiedLog &unifiedLog,
    const Clock &clock, QString logFilePath)
    : m_poster(poster)
    , m_scripting(scripting)
    , m_unifiedLog(unifiedLog)
    , m_clock(clock)
    , m_logFilePath(std::move(logFilePath))
{
}

QString PasteService::defaultLogFilePath()
{
    return QDir::homePath() + QStringLiteral("/larkspool_debug.log");
}

void PasteService::log(const QString &message)
{
    const QString time = m_clock.now().toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const QString line = QStringLiteral("[%1 +0000] ").arg(time) + message + QLatin1Char('\n');
    m_unifiedLog.info(QStringLiteral("PasteService"), line);
    QFile file(m_logFilePath);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        file.write(line.toUtf8());
}

void PasteService::simulatePaste()
{
    log(QStringLiteral("simulatePaste called"));
    performCGEventPaste();
}

void PasteService::performCGEventPaste()
{
    const bool isTrusted = m_poster.isProcessTrusted();
    log(QStringLiteral("AXIsProcessTrusted: ") + text(isTrusted));
    if (!isTrusted) {
        log(QStringLiteral("Not trusted — trying AppleScript fallback"));
        pasteViaAppleScript();
        return;
    }
    const auto source = m_poster.createEventSource(CombinedSessionState);
    log(QStringLiteral("CGEventSource created: ") + text(source != nullptr));
    const auto keyDown = m_poster.createKeyboardEvent(source.get(), KeyCodeV, KeyMotion::Down);
    const auto keyUp = m_poster.createKeyboardEvent(source.get(), KeyCodeV, KeyMotion::Up);
    if (!keyDown || !keyUp) {
        log(QStringLiteral("Failed to create CGEvents — trying AppleScript"));
        pasteViaAppleScript();
        return;
    }
    keyDown->flags = EventFlagCommand;
    keyUp->flags = EventFlagCommand;
    m_poster.post(EventTapLocation::AnnotatedSession, *keyDown);
    m_poster.post(EventTapLocation::AnnotatedSession, *keyUp);
    log(QStringLiteral("Paste simulated via CGEvent SUCCESS"));
}

void PasteService::pasteViaAppleScript()
{
    log(QStringLiteral("Trying AppleScript paste"));
    const auto script = m_scripting.compile(pasteScript());
    if (!script)
        return;
    script->execute(m_lifetime.guard([this](const Result<Success> &outcome) {
        if (outcome)
            log(QStringLiteral("Paste simulated via AppleScript SUCCESS"));
        else
            log(QStringLiteral("AppleScript error: ") + outcome.error().description);
    }));
}

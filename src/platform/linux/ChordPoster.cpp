#include "platform/linux/ChordPoster.h"

#include "base/Console.h"
#include "platform/linux/KeyCodes.h"

#include <chrono>
#include <utility>

namespace
{

constexpr quint16 VirtualV = 9;
constexpr std::chrono::milliseconds RoundTime{10};
constexpr int RoundLimit = 200; // 2 s
constexpr int SettleRounds = 5;
constexpr std::chrono::seconds ClipboardDeadline{1};

} // namespace

ChordPoster::ChordPoster(MainQueue &queue, const Workspace &workspace)
    : m_queue(queue)
    , m_workspace(workspace)
{
}

bool ChordPoster::isProcessTrustedWithPrompt()
{
    return isProcessTrusted();
}

std::unique_ptr<EventSource> ChordPoster::createEventSource(int)
{
    return std::make_unique<EventSource>();
}

std::unique_ptr<KeyEvent> ChordPoster::createKeyboardEvent(
    const EventSource *, quint16 keyCode, KeyMotion motion)
{
    if (!keycodes::evdevCode(keyCode))
        return nullptr;
    return std::make_unique<KeyEvent>(KeyEvent{keyCode, motion, 0});
}

void ChordPoster::post(EventTapLocation, const KeyEvent &event)
{
    if (event.keyCode != VirtualV || event.flags != EventFlagCommand)
        return;
    if (event.motion == KeyMotion::Down) {
        m_isCommandVDown = true;
        return;
    }
    if (!std::exchange(m_isCommandVDown, false))
        return;
    m_waiting.push_back(m_workspace.takeActivatedApplication());
    if (m_waiting.size() > 1)
        return;
    m_roundsLeft = RoundLimit;
    awaitTurn();
}

void ChordPoster::awaitTurn()
{
    const bool isLastRound = m_roundsLeft-- == 0;
    const bool isHeld = isKeyHeld();
    const bool isInFront = isTargetInFront();
    if (!isInFront && (isLastRound || m_waiting.size() > 1)) {
        // With another one behind it the user has moved on.
        dropForLostTarget();
    } else if (isInFront && (!isHeld || isLastRound)) {
        if (isHeld)
            ignoreHeldKeys();
        press(chordOfFocusedProgram());
    } else {
        m_queue.asyncAfter(RoundTime, m_lifetime.guard([this] { awaitTurn(); }));
    }
}

bool ChordPoster::isTargetInFront()
{
    const auto &target = m_waiting.front();
    if (!target)
        return true;
    if (!target->isActive()) {
        m_roundsToSettle = SettleRounds;
        return false;
    }
    // One that comes late gets the time to take the keyboard that the others have had.
    return m_roundsToSettle-- <= 0;
}

void ChordPoster::press(PasteChord chord)
{
    if (chord == PasteChord::ShiftInsert) {
        pressWithPrimary();
        return;
    }
    pressKeys(chord);
    finish();
}

void ChordPoster::pressWithPrimary()
{
    const int number = ++m_primaryNumber;
    const auto finishOnce = [this, number](bool isTaken) {
        if (number == m_primaryNumber)
            finishWithPrimary(isTaken);
    };
    takePrimaryText(m_lifetime.guard(finishOnce));
    m_queue.asyncAfter(ClipboardDeadline, m_lifetime.guard([this, number, finishOnce] {
        if (number == m_primaryNumber)
            cancelPrimaryText();
        finishOnce(false);
    }));
}

void ChordPoster::finishWithPrimary(bool isTaken)
{
    ++m_primaryNumber;
    if (isTargetLost()) {
        dropForLostTarget();
        return;
    }
    if (isTaken)
        pressKeys(PasteChord::ShiftInsert);
    finish();
}

bool ChordPoster::isTargetLost() const
{
    const auto &target = m_waiting.front();
    return target && !target->isActive();
}

void ChordPoster::dropForLostTarget()
{
    drop("the program that they are for is not in front");
}

void ChordPoster::finish()
{
    m_waiting.pop_front();
    m_roundsLeft = RoundLimit;
    m_roundsToSettle = 0;
    // Later: what has called this must not be replaced yet.
    if (!m_waiting.empty())
        m_queue.async(m_lifetime.guard([this] { awaitTurn(); }));
}

void ChordPoster::drop(const char *reason)
{
    consoleLine(QStringLiteral("[Larkspool] No paste keys: ") + QString::fromLatin1(reason));
    finish();
}

PasteChord ChordPoster::chordOfFocusedProgram() const
{
    const auto application = m_workspace.frontmostApplication();
    if (!application)
        return PasteChord::ControlV;
    return pasteChord(application->bundleIdentifier().value_or(QString()),
        executableName(application->processIdentifier()));
}

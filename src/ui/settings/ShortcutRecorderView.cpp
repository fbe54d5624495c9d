#include "ui/settings/ShortcutRecorderView.h"

namespace
{

constexpr quint16 EscapeCode = 53;
constexpr quint32 AnyModifier = CommandKey | ShiftKey | OptionKey | ControlKey;

} // namespace

ShortcutRecorderView::ShortcutRecorderView(Purpose purpose, const Surroundings &surroundings)
    : m_purpose(std::move(purpose))
    , m_surroundings(surroundings)
{
    loadCombo();
}

ShortcutRecorderView::~ShortcutRecorderView()
{
    stopRecording();
}

QString ShortcutRecorderView::displayString() const
{
    return isRecording() ? tr("Press keys...") : m_currentCombo.displayString();
}

void ShortcutRecorderView::loadCombo()
{
    const auto stored = m_surroundings.defaults.data(m_purpose.defaultsKey);
    const auto combo = stored ? KeyCombo::decoded(*stored) : std::nullopt;
    if (!combo || *combo == m_currentCombo)
        return;
    m_currentCombo = *combo;
    Q_EMIT changed();
}

void ShortcutRecorderView::startRecording()
{
    if (isRecording())
        return;
    m_surroundings.onRecording(Recording::Begins);
    m_eventMonitor = m_surroundings.events.addKeyDownMonitor(
        [this](const LocalKeyEvent &event) { return keyDown(event); });
    Q_EMIT changed();
}

void ShortcutRecorderView::stopRecording()
{
    if (!isRecording())
        return;
    m_eventMonitor.reset();
    m_surroundings.onRecording(Recording::Ends);
    Q_EMIT changed();
}

LocalEventFate ShortcutRecorderView::keyDown(const LocalKeyEvent &event)
{
    const quint32 modifiers = event.hotKeyModifiers & AnyModifier;
    // What still repeats may be the key that began the recording.
    if (modifiers != 0 && event.isRepeat)
        return LocalEventFate::Consumed;
    if (modifiers != 0 && event.position) {
        m_currentCombo = {.keyCode = *event.position, .modifiers = modifiers};
        saveCombo(m_currentCombo);
        stopRecording();
        return LocalEventFate::Consumed;
    }
    if (modifiers == 0 && event.keyCode == EscapeCode) {
        stopRecording();
        return LocalEventFate::Consumed;
    }
    return LocalEventFate::PassedOn;
}

void ShortcutRecorderView::saveCombo(const KeyCombo &combo)
{
    m_surroundings.defaults.setData(m_purpose.defaultsKey, combo.encoded());
    m_surroundings.notifications.post(m_purpose.notificationName);
}

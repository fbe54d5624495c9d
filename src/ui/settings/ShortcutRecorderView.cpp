#include "ui/settings/ShortcutRecorderView.h"

#include <QCoreApplication>

namespace
{

constexpr quint16 EscapeCode = 53;
constexpr quint32 AnyModifier = CommandKey | ShiftKey | OptionKey | ControlKey;

constexpr auto KeyContext = "KeyName";

// For the translator's list; the other keys' names are letters, digits and symbols.
//: The name of the key that types a blank.
[[maybe_unused]] constexpr const char *TranslatedKey = QT_TRANSLATE_NOOP("KeyName", "Space");

/// The combination with its key in the user's language, to be read from left to right in every language.
QString shown(const KeyCombo &combo)
{
    QString text = combo.displayString();
    if (const auto key = KeyCombo::keyCodeToString(combo.keyCode)) {
        text.chop(key->size());
        text += QCoreApplication::translate(KeyContext, key->toUtf8().constData());
    }
    constexpr QChar LeftToRightMark(0x200E);
    if (text.isRightToLeft())
        text.prepend(LeftToRightMark);
    return text;
}

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
    //: On a button, while it waits for a key combination.
    return isRecording() ? tr("Press keys...") : shown(m_currentCombo);
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

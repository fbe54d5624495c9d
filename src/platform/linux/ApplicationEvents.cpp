#include "platform/linux/ApplicationEvents.h"

#include "platform/HotKeyCenter.h"
#include "platform/linux/KeyCodes.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointingDevice>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{

/// A notch of a wheel, in eighths of a degree.
constexpr double Notch = 120;
/// What a notch is worth in points, for wheels that turn in parts of one.
constexpr double PointsOfNotch = 40;
constexpr quint16 NoKey = 0xffff;

/// Keys that are meant by what they are called, wherever a layout has put them.
quint16 namedKeyCode(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 36;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 48;
    case Qt::Key_Backspace:
        return 51;
    case Qt::Key_Escape:
        return 53;
    case Qt::Key_Left:
        return 123;
    case Qt::Key_Right:
        return 124;
    case Qt::Key_Down:
        return 125;
    case Qt::Key_Up:
        return 126;
    default:
        return NoKey;
    }
}

EventModifier modifiersOf(Qt::KeyboardModifiers held)
{
    EventModifier modifiers = EventModifier::None;
    if (held & (Qt::ControlModifier | Qt::MetaModifier))
        modifiers = modifiers | EventModifier::Command;
    if (held & Qt::ShiftModifier)
        modifiers = modifiers | EventModifier::Shift;
    if (held & Qt::AltModifier)
        modifiers = modifiers | EventModifier::Option;
    return modifiers;
}

quint32 hotKeyModifiersOf(Qt::KeyboardModifiers held)
{
    quint32 modifiers = 0;
    if (held & Qt::MetaModifier)
        modifiers |= CommandKey;
    if (held & Qt::ShiftModifier)
        modifiers |= ShiftKey;
    if (held & Qt::AltModifier)
        modifiers |= OptionKey;
    if (held & Qt::ControlModifier)
        modifiers |= ControlKey;
    return modifiers;
}

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Mode_switch:
    case Qt::Key_Multi_key:
        return true;
    default:
        return false;
    }
}

} // namespace

template<class Handler>
struct ApplicationEvents::Handlers {
    struct Entry {
        quint64 number;
        std::shared_ptr<Handler> handler;
    };
    std::vector<Entry> entries;
    quint64 next = 0;

    /// Monitors may come and go meanwhile: each is looked for again before it is asked.
    template<class Event>
    LocalEventFate ask(const Event &event)
    {
        const std::vector<Entry> asked = entries;
        for (const Entry &entry : asked) {
            const bool isThere = std::ranges::any_of(
                entries, [&](const Entry &other) { return other.number == entry.number; });
            if (isThere && (*entry.handler)(event) == LocalEventFate::Consumed)
                return LocalEventFate::Consumed;
        }
        return LocalEventFate::PassedOn;
    }
};

template<class Handler>
class ApplicationEvents::Registration : public LocalEvents::Monitor
{
public:
    Registration(const std::shared_ptr<Handlers<Handler>> &handlers, Handler handler)
        : m_handlers(handlers)
        , m_number(handlers->next++)
    {
        handlers->entries.push_back({m_number, std::make_shared<Handler>(std::move(handler))});
    }
    ~Registration() override
    {
        if (const auto handlers = m_handlers.lock())
            std::erase_if(handlers->entries, [this](const auto &entry) { return entry.number == m_number; });
    }
    Registration(const Registration &) = delete;
    Registration &operator=(const Registration &) = delete;

private:
    std::weak_ptr<Handlers<Handler>> m_handlers;
    quint64 m_number;
};

ApplicationEvents::ApplicationEvents()
    : m_keyHandlers(std::make_shared<Handlers<KeyHandler>>())
    , m_scrollHandlers(std::make_shared<Handlers<ScrollHandler>>())
{
    qGuiApp->installEventFilter(this);
}

ApplicationEvents::~ApplicationEvents() = default;

std::unique_ptr<LocalEvents::Monitor> ApplicationEvents::addKeyDownMonitor(KeyHandler handler)
{
    return std::make_unique<Registration<KeyHandler>>(m_keyHandlers, std::move(handler));
}

std::unique_ptr<LocalEvents::Monitor> ApplicationEvents::addScrollMonitor(ScrollHandler handler)
{
    return std::make_unique<Registration<ScrollHandler>>(m_scrollHandlers, std::move(handler));
}

LocalKeyEvent ApplicationEvents::keyEvent(const QKeyEvent &event)
{
    const auto scanCode = static_cast<quint16>(event.nativeScanCode());
    const auto position = scanCode >= keycodes::XkbOffset
        ? keycodes::virtualKeyCode(scanCode - keycodes::XkbOffset)
        : std::nullopt;
    quint16 keyCode = namedKeyCode(event.key());
    if (keyCode == NoKey)
        keyCode = position.value_or(NoKey);
    return {.keyCode = keyCode,
        .modifiers = modifiersOf(event.modifiers()),
        .characters = event.text(),
        .isRepeat = event.isAutoRepeat(),
        .position = position,
        .hotKeyModifiers = hotKeyModifiersOf(event.modifiers())};
}

LocalScrollEvent ApplicationEvents::scrollEvent(const QWheelEvent &event)
{
    const double angle = event.angleDelta().y();
    const bool isTouchPad = event.device() && event.device()->type() == QInputDevice::DeviceType::TouchPad;
    const bool isWholeNotch = std::fmod(angle, Notch) == 0;
    if (!isTouchPad && isWholeNotch)
        return {.scrollingDeltaY = angle / Notch, .hasPreciseScrollingDeltas = false};
    const double points =
        event.pixelDelta().isNull() ? angle / Notch * PointsOfNotch : event.pixelDelta().y();
    return {.scrollingDeltaY = points, .hasPreciseScrollingDeltas = true};
}

bool ApplicationEvents::eventFilter(QObject *watched, QEvent *event)
{
    // A window passes its events on to its items, which come by here as well.
    if (!watched->isWindowType())
        return false;
    if (event->type() == QEvent::KeyPress) {
        const auto &press = static_cast<QKeyEvent &>(*event);
        return !isModifier(press.key()) && m_keyHandlers->ask(keyEvent(press)) == LocalEventFate::Consumed;
    }
    if (event->type() == QEvent::Wheel)
        return m_scrollHandlers->ask(scrollEvent(static_cast<QWheelEvent &>(*event))) ==
            LocalEventFate::Consumed;
    return false;
}

#include "contract/ApplicationWindow.h"

#include "platform/linux/KeyCodes.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWheelEvent>

namespace
{

constexpr int Notch = 120;

/// What the toolkit calls a key that is told by its meaning; nothing for one that is told by its place.
int namedKey(quint16 keyCode)
{
    switch (keyCode) {
    case 36:
        return Qt::Key_Return;
    case 48:
        return Qt::Key_Tab;
    case 51:
        return Qt::Key_Backspace;
    case 53:
        return Qt::Key_Escape;
    case 123:
        return Qt::Key_Left;
    case 124:
        return Qt::Key_Right;
    case 125:
        return Qt::Key_Down;
    case 126:
        return Qt::Key_Up;
    default:
        return Qt::Key_unknown;
    }
}

Qt::KeyboardModifiers qtModifiers(EventModifier held)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, holds(held, EventModifier::Command));
    modifiers.setFlag(Qt::ShiftModifier, holds(held, EventModifier::Shift));
    modifiers.setFlag(Qt::AltModifier, holds(held, EventModifier::Option));
    return modifiers;
}

} // namespace

LocalEventFate ApplicationWindow::press(const LocalKeyEvent &key)
{
    return pressKey(namedKey(key.keyCode), keycodes::evdevCode(key.keyCode).value_or(0),
        qtModifiers(key.modifiers), key.characters);
}

LocalEventFate ApplicationWindow::pressKey(
    int key, quint16 position, Qt::KeyboardModifiers modifiers, const QString &text, bool isRepeat)
{
    const quint32 scanCode = position + keycodes::XkbOffset;
    QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, text, isRepeat);
    return deliver(event);
}

LocalEventFate ApplicationWindow::scroll(const LocalScrollEvent &turn)
{
    const int amount = qRound(turn.scrollingDeltaY);
    const QPoint pixels = turn.hasPreciseScrollingDeltas ? QPoint(0, amount) : QPoint();
    const QPoint angle(0, turn.hasPreciseScrollingDeltas ? amount : amount * Notch);
    const QPointingDevice *const device =
        turn.hasPreciseScrollingDeltas ? &m_touchPad : QPointingDevice::primaryPointingDevice();
    QWheelEvent event({}, {}, pixels, angle, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false,
        Qt::MouseEventNotSynthesized, device);
    return deliver(event);
}

LocalEventFate ApplicationWindow::deliver(QEvent &event)
{
    m_window.hasGot = false;
    QCoreApplication::sendEvent(&m_window, &event);
    return m_window.hasGot ? LocalEventFate::PassedOn : LocalEventFate::Consumed;
}

#pragma once

#include "contract/LocalEventsContract.h"
#include "platform/linux/ApplicationEvents.h"

#include <QPointingDevice>
#include <QWindow>

/// A window of this process, and events as the toolkit makes them of what the server sends.
class ApplicationWindow : public LocalEventsWorld
{
public:
    LocalEvents &events() override { return *m_events; }
    void endEvents() override { m_events.reset(); }
    LocalEventFate press(const LocalKeyEvent &key) override;
    LocalEventFate scroll(const LocalScrollEvent &turn) override;

    /// A press with the toolkit's own words: `position` is the kernel's code of the key.
    LocalEventFate pressKey(int key, quint16 position, Qt::KeyboardModifiers modifiers,
        const QString &text = {}, bool isRepeat = false);

private:
    class Window : public QWindow
    {
    public:
        bool hasGot = false;

    protected:
        void keyPressEvent(QKeyEvent *) override { hasGot = true; }
        void wheelEvent(QWheelEvent *) override { hasGot = true; }
    };
    LocalEventFate deliver(QEvent &event);

    std::unique_ptr<ApplicationEvents> m_events = std::make_unique<ApplicationEvents>();
    Window m_window;
    QPointingDevice m_touchPad{QStringLiteral("touch pad"), 1, QInputDevice::DeviceType::TouchPad,
        QPointingDevice::PointerType::Finger, QInputDevice::Capability::PixelScroll, 5, 3};
};

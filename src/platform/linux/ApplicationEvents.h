#pragma once

#include "platform/LocalEvents.h"

#include <QObject>

#include <vector>

class QKeyEvent;
class QWheelEvent;

/// The key presses and wheel turns of all of the program's windows, by an event filter on the application
/// object, which must outlive it. A key's scan code is the server's: the kernel's code and 8, on X11 and
/// Wayland alike.
class ApplicationEvents : public QObject, public LocalEvents
{
public:
    ApplicationEvents();
    ~ApplicationEvents() override;

    std::unique_ptr<Monitor> addKeyDownMonitor(KeyHandler handler) override;
    std::unique_ptr<Monitor> addScrollMonitor(ScrollHandler handler) override;

    static LocalKeyEvent keyEvent(const QKeyEvent &event);
    static LocalScrollEvent scrollEvent(const QWheelEvent &event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    template<class Handler>
    struct Handlers;
    template<class Handler>
    class Registration;

    std::shared_ptr<Handlers<KeyHandler>> m_keyHandlers;
    std::shared_ptr<Handlers<ScrollHandler>> m_scrollHandlers;
};

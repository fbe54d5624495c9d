#pragma once

#include "platform/HotKeyCenter.h"

/// Hot keys by passive grabs on the root window (X protocol, GrabKey), on a connection of their own. A
/// combination is grabbed once for each state of the lock keys, and anew when a change of layout moves a
/// modifier.
class X11HotKeyCenter : public HotKeyCenter
{
public:
    /// Null without an X server or without its XKB extension.
    static std::unique_ptr<X11HotKeyCenter> open();
    ~X11HotKeyCenter() override;

    HotKeyRegistration registerEventHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id) override;
    void installEventHandler(std::function<void()> handler) override;

private:
    class Grabs;
    class Registration;

    explicit X11HotKeyCenter(std::shared_ptr<Grabs> grabs);

    std::shared_ptr<Grabs> m_grabs;
    quint64 m_nextId = 1;
};

#pragma once

#include "base/MainQueue.h"
#include "platform/HotKeyCenter.h"

#include <QByteArray>

/// Hot keys by way of the desktop portal, for desktops that let no program watch the keyboard. Which keys a
/// hot key has is the desktop's and the user's to say; the combination that it is registered with is a
/// proposal. What a window needs to come to the front is offered (see offerActivationToken) before the
/// handler for presses is called.
class PortalHotKeyCenter : public HotKeyCenter
{
public:
    /// On connections of its own to the bus at the address: the portal wants to know the program before it is
    /// asked for anything else. The queue must outlive it.
    PortalHotKeyCenter(const QByteArray &busAddress, MainQueue &queue);
    ~PortalHotKeyCenter() override;

    /// Whether there is a bus.
    bool isConnected() const;

    /// Succeeds while there is a bus; the portal answers later.
    HotKeyRegistration registerEventHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id) override;
    void installEventHandler(std::function<void()> handler) override;

private:
    class Shortcuts;
    class Registration;

    std::shared_ptr<Shortcuts> m_shortcuts;
    quint64 m_nextId = 1;
};

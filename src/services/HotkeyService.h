#pragma once

#include "services/KeyCombo.h"

#include <functional>
#include <memory>

/// The one system-wide hot key of the program. Main thread only.
class HotkeyService
{
public:
    /// Records itself as the process-wide `sharedInstance`. The centre must outlive it.
    explicit HotkeyService(HotKeyCenter &center);
    ~HotkeyService();
    HotkeyService(const HotkeyService &) = delete;
    HotkeyService &operator=(const HotkeyService &) = delete;

    /// The service that presses are given to: the one made last, null when it is gone.
    static HotkeyService *sharedInstance();

    /// Makes the combination the hot key, in place of the one before, and the handler what a press calls. One
    /// that the system refuses, now or later, leaves no hot key and prints a line with the status.
    void registerHotkey(const KeyCombo &combo, std::function<void()> handler);

    /// Releases the hot key, if there is one.
    void unregister();

    bool isRegistered() const { return m_eventHotKeyRef != nullptr; }

private:
    void installHandlers();
    void registrationFailed(int status);

    HotKeyCenter &m_center;
    std::unique_ptr<HotKeyRef> m_eventHotKeyRef;
    std::function<void()> m_onTrigger;
};

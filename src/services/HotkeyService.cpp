#include "services/HotkeyService.h"

#include "base/Console.h"

namespace
{

constexpr HotKeyId Identity{0x4C524B53, 1}; // "LRKS"

HotkeyService *theInstance = nullptr;

} // namespace

HotkeyService::HotkeyService(HotKeyCenter &center)
    : m_center(center)
{
    theInstance = this;
}

HotkeyService::~HotkeyService()
{
    if (theInstance == this)
        theInstance = nullptr;
}

HotkeyService *HotkeyService::sharedInstance()
{
    return theInstance;
}

void HotkeyService::registerHotkey(const KeyCombo &combo, std::function<void()> handler)
{
    unregister();
    m_onTrigger = std::move(handler);
    const quint32 modifiers = combo.modifiers & (CommandKey | ShiftKey | OptionKey | ControlKey);
    HotKeyRegistration registration = m_center.registerEventHotKey(combo.keyCode, modifiers, Identity);
    if (registration.status != HotKeyRegistered) {
        registrationFailed(registration.status);
        return;
    }
    m_eventHotKeyRef = std::move(registration.ref);
    installHandlers();
}

void HotkeyService::unregister()
{
    m_eventHotKeyRef.reset();
}

void HotkeyService::registrationFailed(int status)
{
    m_eventHotKeyRef.reset();
    consoleLine(QStringLiteral("Failed to register hotkey: %1").arg(status));
}

void HotkeyService::installHandlers()
{
    // The callbacks get no context: they find the service by themselves.
    m_center.installEventHandler([] {
        if (!theInstance)
            return;
        // A copy: the action may register another hot key, and with it another action.
        if (const auto onTrigger = theInstance->m_onTrigger)
            onTrigger();
    });
    m_center.installFailureHandler([](int status) {
        if (theInstance && theInstance->isRegistered())
            theInstance->registrationFailed(status);
    });
}

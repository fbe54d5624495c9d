#include "contract/HotKeyCenterContract.h"
#include "fakes/FakeHotKeyCenter.h"
#include "platform/linux/KeyCodes.h"
#include "platform/x11/X11Backends.h"
#include "support/KeyRobot.h"
#include "support/XServer.h"

#include <linux/input-event-codes.h>

namespace
{

class FakeWorld : public HotKeyWorld
{
public:
    HotKeyCenter &center() override { return *m_center; }
    void endCenter() override { m_center.reset(); }
    void press(quint32 keyCode, quint32 modifiers) override { m_center->press(keyCode, modifiers); }

    bool takeElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        if (m_center && m_center->registered().contains({keyCode, modifiers}))
            return false;
        if (m_center)
            m_center->takeElsewhere(keyCode, modifiers);
        return true;
    }

    void giveBackElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        m_center->giveBackElsewhere(keyCode, modifiers);
    }

private:
    std::unique_ptr<FakeHotKeyCenter> m_center = std::make_unique<FakeHotKeyCenter>();
};

class X11World : public HotKeyWorld
{
public:
    HotKeyCenter &center() override { return *m_center; }
    void endCenter() override { m_center.reset(); }

    void press(quint32 keyCode, quint32 modifiers) override
    {
        std::vector<int> held;
        if (modifiers & CommandKey)
            held.push_back(KEY_LEFTMETA);
        if (modifiers & ShiftKey)
            held.push_back(KEY_LEFTSHIFT);
        if (modifiers & OptionKey)
            held.push_back(KEY_LEFTALT);
        if (modifiers & ControlKey)
            held.push_back(KEY_LEFTCTRL);
        for (const int key : held)
            m_robot.down(key);
        m_robot.chord({*keycodes::evdevCode(static_cast<quint16>(keyCode))});
        for (auto key = held.rbegin(); key != held.rend(); ++key)
            m_robot.up(*key);
    }

    bool takeElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_grab_key_checked(m_other->get(), 0, m_other->root(), bits(modifiers), key(keyCode),
                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        return !error;
    }

    void giveBackElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_ungrab_key_checked(m_other->get(), key(keyCode), m_other->root(), bits(modifiers))));
    }

private:
    // As on the keyboard that the server starts with.
    static uint16_t bits(quint32 modifiers)
    {
        return static_cast<uint16_t>((modifiers & CommandKey ? XCB_MOD_MASK_4 : 0) |
            (modifiers & ShiftKey ? XCB_MOD_MASK_SHIFT : 0) | (modifiers & OptionKey ? XCB_MOD_MASK_1 : 0) |
            (modifiers & ControlKey ? XCB_MOD_MASK_CONTROL : 0));
    }
    static xcb_keycode_t key(quint32 keyCode)
    {
        return static_cast<xcb_keycode_t>(
            *keycodes::evdevCode(static_cast<quint16>(keyCode)) + keycodes::XkbOffset);
    }

    XServer m_server;
    std::unique_ptr<HotKeyCenter> m_center = platform::makeX11HotKeyCenter();
    std::unique_ptr<X11Connection> m_other = X11Connection::open();
    KeyRobot m_robot;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Backends, HotKeyCenterContract,
    ::testing::Values(HotKeyBackend{"Fake", [] { return std::make_unique<FakeWorld>(); }},
        HotKeyBackend{"X11", [] { return std::make_unique<X11World>(); }}),
    [](const auto &backend) { return backend.param.name; });

#include "support/KeyRobot.h"

#include "platform/linux/KeyCodes.h"
#include "platform/x11/XkbProtocol.h"

#include <xcb/xtest.h>

#include <QProcess>

#include <algorithm>

KeyRobot::KeyRobot()
    : m_connection(X11Connection::open())
{
    const XcbReply<xcb_xkb_use_extension_reply_t> use(xcb_xkb_use_extension_reply(m_connection->get(),
        xcb_xkb_use_extension(m_connection->get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
}

KeyRobot::~KeyRobot() = default;

void KeyRobot::down(int evdevCode)
{
    fake(XCB_KEY_PRESS, evdevCode);
    sync();
}

void KeyRobot::up(int evdevCode)
{
    fake(XCB_KEY_RELEASE, evdevCode);
    sync();
}

void KeyRobot::chord(std::initializer_list<int> evdevCodes)
{
    for (const int code : evdevCodes)
        fake(XCB_KEY_PRESS, code);
    for (const auto *code = evdevCodes.end(); code != evdevCodes.begin();)
        fake(XCB_KEY_RELEASE, *--code);
    sync();
}

bool KeyRobot::setLayout(const QStringList &arguments)
{
    return QProcess::execute(QStringLiteral("setxkbmap"), arguments) == 0;
}

bool KeyRobot::moveModifier(int from, int to)
{
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(
        m_connection->get(), xcb_get_modifier_mapping(m_connection->get()), nullptr));
    const int perModifier = mapping->keycodes_per_modifier;
    xcb_keycode_t *const keys = xcb_get_modifier_mapping_keycodes(mapping.get());
    std::swap_ranges(keys + from * perModifier, keys + (from + 1) * perModifier, keys + to * perModifier);
    const XcbReply<xcb_set_modifier_mapping_reply_t> reply(xcb_set_modifier_mapping_reply(m_connection->get(),
        xcb_set_modifier_mapping(m_connection->get(), static_cast<uint8_t>(perModifier), keys), nullptr));
    return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
}

void KeyRobot::lockGroup(int group)
{
    xcb_xkb_latch_lock_state(
        m_connection->get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, static_cast<uint8_t>(group), 0, 0, 0);
    sync();
}

void KeyRobot::lockModifiers(int bits)
{
    xcb_xkb_latch_lock_state(
        m_connection->get(), XCB_XKB_ID_USE_CORE_KBD, 0xff, static_cast<uint8_t>(bits), 0, 0, 0, 0, 0);
    sync();
}

void KeyRobot::fake(int type, int evdevCode)
{
    xcb_test_fake_input(m_connection->get(), static_cast<uint8_t>(type),
        static_cast<uint8_t>(evdevCode + keycodes::XkbOffset), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void KeyRobot::sync()
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection->get(), xcb_get_input_focus(m_connection->get()), nullptr));
}

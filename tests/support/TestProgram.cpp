#include "support/TestProgram.h"

#include "support/Waiting.h"

TestProgram::TestProgram(const QByteArray &instance, const QByteArray &className, qint64 processIdentifier)
    : m_connection(X11Connection::open())
    , m_class(instance + '\0' + className + '\0')
    , m_processIdentifier(processIdentifier)
{
    m_connection->onEvent = [this](const xcb_generic_event_t &event) {
        const auto &key = reinterpret_cast<const xcb_key_press_event_t &>(event);
        const int type = event.response_type & 0x7f;
        if (type == XCB_KEY_PRESS)
            m_keyPresses.push_back({key.detail, key.state});
        m_keyReleaseCount += type == XCB_KEY_RELEASE;
    };
}

TestProgram::~TestProgram() = default;

void TestProgram::setClass(const QByteArray &instance, const QByteArray &className)
{
    m_class = instance + '\0' + className + '\0';
}

xcb_window_t TestProgram::show(Focus focus, std::chrono::milliseconds deadline)
{
    xcb_connection_t *const connection = m_connection->get();
    const xcb_window_t window = xcb_generate_id(connection);
    const uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, m_connection->root(), 100, 100, 300, 200, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
        static_cast<uint32_t>(m_class.size()), m_class.constData());
    if (m_processIdentifier >= 0) {
        const auto process = static_cast<uint32_t>(m_processIdentifier);
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, m_connection->atom("_NET_WM_PID"),
            XCB_ATOM_CARDINAL, 32, 1, &process);
    }
    xcb_map_window(connection, window);
    m_windows.push_back(window);
    if (focus == Focus::Takes)
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    m_connection->flush();
    waitUntil([this] { return hasFocus(); }, deadline);
    return window;
}

void TestProgram::hide(xcb_window_t window)
{
    xcb_unmap_window(m_connection->get(), window);
    m_connection->flush();
}

void TestProgram::close(xcb_window_t window)
{
    xcb_destroy_window(m_connection->get(), window);
    m_connection->flush();
}

bool TestProgram::hasFocus()
{
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_connection->get(), xcb_get_input_focus(m_connection->get()), nullptr));
    m_connection->processEvents();
    return focus && !m_windows.empty() && focus->focus == m_windows.back();
}

#include "platform/x11/X11Connection.h"

#include <string>

namespace
{

xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    xcb_screen_iterator_t at = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0 && at.rem > 1)
        xcb_screen_next(&at);
    return at.data;
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open()
{
    int screenNumber = 0;
    xcb_connection_t *const connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screenNumber));
}

X11Connection::X11Connection(xcb_connection_t *connection, int screenNumber)
    : m_connection(connection)
    , m_screen(screenOf(connection, screenNumber))
    , m_notifier(xcb_get_file_descriptor(connection), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { processEvents(); });
}

X11Connection::~X11Connection()
{
    m_notifier.setEnabled(false);
    xcb_disconnect(m_connection);
}

xcb_atom_t X11Connection::atom(const QByteArray &name)
{
    const auto found = m_atoms.find(name.toStdString());
    if (found != m_atoms.end())
        return found->second;
    internAtoms({name});
    return m_atoms[name.toStdString()];
}

void X11Connection::internAtoms(const std::vector<QByteArray> &names)
{
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(names.size());
    for (const QByteArray &name : names)
        cookies.push_back(
            xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData()));
    for (size_t i = 0; i < names.size(); ++i) {
        const XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection, cookies[i], nullptr));
        const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        m_atoms[names[i].toStdString()] = atom;
        if (atom != XCB_ATOM_NONE)
            m_names[atom] = names[i];
    }
}

QByteArray X11Connection::atomName(xcb_atom_t atom)
{
    if (atom == XCB_ATOM_NONE)
        return {};
    const auto found = m_names.find(atom);
    if (found != m_names.end())
        return found->second;
    const XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    if (!reply)
        return {};
    QByteArray name(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    m_names[atom] = name;
    m_atoms[name.toStdString()] = atom;
    return name;
}

void X11Connection::flush()
{
    xcb_flush(m_connection);
    // Writing may have read: events are in XCB's queue then, and the socket has nothing to notify of.
    if (!m_isProcessing)
        QMetaObject::invokeMethod(
            &m_notifier, [this] { processEvents(); }, Qt::QueuedConnection);
}

/// Null when there is none, everything that is buffered is sent, and sending has not brought in another one.
XcbReply<xcb_generic_event_t> X11Connection::nextEvent()
{
    XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
    if (!event) {
        xcb_flush(m_connection);
        event.reset(xcb_poll_for_queued_event(m_connection));
    }
    return event;
}

void X11Connection::processEvents()
{
    // A handler that awaits a reply may bring in more events; the outer loop takes them.
    if (m_isProcessing)
        return;
    m_isProcessing = true;
    while (const XcbReply<xcb_generic_event_t> event = nextEvent()) {
        if (onEvent)
            onEvent(*event);
    }
    m_isProcessing = false;
    if (xcb_connection_has_error(m_connection) != 0 && m_notifier.isEnabled()) {
        m_notifier.setEnabled(false);
        if (onClosed)
            onClosed();
    }
}

#include "platform/x11/X11ContentFetch.h"

#include <cstring>

namespace
{

constexpr qint64 LargestTargetList = 64LL * 1024;

std::vector<xcb_atom_t> atomsIn(const QByteArray &bytes)
{
    std::vector<xcb_atom_t> atoms;
    for (qsizetype at = 0; at + qsizetype(sizeof(xcb_atom_t)) <= bytes.size(); at += sizeof(xcb_atom_t)) {
        xcb_atom_t atom = XCB_ATOM_NONE;
        std::memcpy(&atom, bytes.constData() + at, sizeof atom);
        atoms.push_back(atom);
    }
    return atoms;
}

} // namespace

X11ContentFetch::X11ContentFetch(X11Connection &connection, X11RetiredWindows &retired,
    const ClipboardLimits &limits, qint64 number, Callbacks callbacks)
    : ContentFetch(limits, number, std::move(callbacks))
    , m_connection(connection)
    , m_retired(retired)
{
    makeReceiver();
}

void X11ContentFetch::makeReceiver()
{
    m_receivers.push_back(std::make_unique<X11SelectionReceiver>(m_connection, m_retired,
        X11SelectionReceiver::Callbacks{[this](qint64 bytes) { progressed(bytes); },
            [this](const X11SelectionReceiver::Result &result) { received(result); }}));
}

void X11ContentFetch::start(xcb_timestamp_t time)
{
    m_time = time;
    ask(m_connection.atom("TARGETS"), LargestTargetList);
}

void X11ContentFetch::ownerChanged(uint32_t sequence)
{
    if (hasEnded())
        return;
    supersede();
    // A request that the server got after the change went to the new owner: its answer is another content's.
    if (isBeginning() || isReadable() || m_receivers.back()->isUnansweredSince(sequence))
        end(false);
}

void X11ContentFetch::ownerIsGone()
{
    if (hasEnded())
        return;
    supersede();
    if (!m_receivers.back()->hasEverything())
        end(false);
}

void X11ContentFetch::handle(const xcb_selection_notify_event_t &event)
{
    if (!hasEnded())
        m_receivers.back()->handle(event);
}

void X11ContentFetch::handle(const xcb_property_notify_event_t &event)
{
    if (!hasEnded())
        m_receivers.back()->handle(event);
}

void X11ContentFetch::request(const QByteArray &target, qint64 limit)
{
    m_target = target;
    ask(m_connection.atom(target), limit);
}

void X11ContentFetch::ask(xcb_atom_t target, qint64 limit)
{
    m_receivers.back()->request(m_connection.atom("CLIPBOARD"), target, m_time, limit);
}

/// Its owner may go on with an incremental transfer, so that the window is of no more use.
void X11ContentFetch::giveUpTransfer()
{
    makeReceiver();
}

void X11ContentFetch::received(const X11SelectionReceiver::Result &result)
{
    if (hasEnded())
        return;
    if (m_target.isEmpty()) {
        acceptTargets(result);
        return;
    }
    Transfer transfer{Outcome::Refused, m_target, result.bytes, result.size};
    if (result.outcome == X11SelectionReceiver::Outcome::TooLarge)
        transfer.outcome = Outcome::TooLarge;
    else if (result.outcome == X11SelectionReceiver::Outcome::Delivered && result.format != 32)
        transfer.outcome = Outcome::Delivered;
    // Some owners answer STRING with UTF-8 and say so.
    if (m_target == clipboard::Latin1String && result.type == m_connection.atom(clipboard::Utf8String))
        transfer.target = clipboard::Utf8String;
    accept(transfer);
}

void X11ContentFetch::acceptTargets(const X11SelectionReceiver::Result &result)
{
    // An owner from before the ICCCM knows no list of targets, but may well have a text.
    if (result.outcome != X11SelectionReceiver::Outcome::Delivered || result.format != 32) {
        follow(clipboard::fetchPlanForSilentOwner());
        return;
    }
    QByteArrayList offered;
    for (const xcb_atom_t atom : atomsIn(result.bytes)) {
        const QByteArray name = m_connection.atomName(atom);
        if (!name.isEmpty())
            offered.append(name);
    }
    follow(clipboard::fetchPlan(offered));
}

#include "platform/x11/X11SelectionServer.h"

#include "platform/x11/X11Properties.h"

namespace
{

/// Pictures that wait to be encoded; each may be large, and anybody may ask.
constexpr size_t MaximumJobs = 64;

} // namespace

X11SelectionServer::X11SelectionServer(
    X11Connection &connection, ThreadInbox &inbox, const ClipboardLimits &limits, Content content)
    : m_connection(connection)
    , m_inbox(inbox)
    , m_content(std::move(content))
    , m_largestProperty(x11::largestProperty(connection))
    , m_sends(connection, limits.stalledReceiver)
{
}

void X11SelectionServer::handle(const xcb_selection_request_event_t &request)
{
    const bool isMultiple = request.target == m_connection.atom("MULTIPLE");
    const std::vector<Conversion> conversions = conversionsOf(request, isMultiple);
    if (conversions.empty() || m_jobs.size() >= MaximumJobs) {
        x11::notifyRequestor(m_connection, request, XCB_ATOM_NONE);
        return;
    }
    const int id = m_nextJob++;
    m_jobs[id] = {request, isMultiple, conversions, 0};
    for (size_t i = 0; i < conversions.size(); ++i)
        convert(id, i);
    finishIfDone(id);
}

std::vector<X11SelectionServer::Conversion> X11SelectionServer::conversionsOf(
    const xcb_selection_request_event_t &request, bool isMultiple)
{
    // Obsolete clients leave the property to the owner (ICCCM section 2.2).
    if (!isMultiple)
        return {{request.target, request.property != XCB_ATOM_NONE ? request.property : request.target}};
    if (request.property == XCB_ATOM_NONE)
        return {};
    const std::vector<xcb_atom_t> atoms = x11::atomsOf(m_connection, request.requestor, request.property);
    std::vector<Conversion> conversions;
    for (size_t i = 0; i + 1 < atoms.size(); i += 2)
        conversions.push_back({atoms[i], atoms[i + 1]});
    return conversions;
}

void X11SelectionServer::convert(int id, size_t index)
{
    Job &job = m_jobs[id];
    Conversion &conversion = job.conversions[index];
    const xcb_window_t requestor = job.request.requestor;
    if (conversion.property == XCB_ATOM_NONE)
        return;
    if (conversion.target == m_connection.atom("TARGETS")) {
        placeTargets(requestor, conversion.property);
        return;
    }
    if (conversion.target == m_connection.atom("TIMESTAMP")) {
        placeTimestamp(requestor, conversion.property);
        return;
    }
    const clipboard::Answer answer =
        clipboard::answerFor(m_content(), m_connection.atomName(conversion.target));
    if (const auto *const rendering = std::get_if<clipboard::Rendering>(&answer)) {
        place(requestor, conversion.property, rendering->type, rendering->bytes);
    } else if (const auto *const image = std::get_if<clipboard::PendingImage>(&answer)) {
        ++job.pendingImages;
        encodeLater(id, index, *image);
    } else {
        conversion.property = XCB_ATOM_NONE;
    }
}

void X11SelectionServer::placeTargets(xcb_window_t requestor, xcb_atom_t property)
{
    std::vector<xcb_atom_t> atoms = {
        m_connection.atom("TARGETS"), m_connection.atom("TIMESTAMP"), m_connection.atom("MULTIPLE")};
    for (const QByteArray &target : clipboard::offeredTargets(m_content()))
        atoms.push_back(m_connection.atom(target));
    x11::setAtoms(m_connection, requestor, property, XCB_ATOM_ATOM, atoms);
}

void X11SelectionServer::placeTimestamp(xcb_window_t requestor, xcb_atom_t property)
{
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER, 32,
        1, &m_ownedSince);
}

void X11SelectionServer::place(
    xcb_window_t requestor, xcb_atom_t property, const QByteArray &type, const QByteArray &bytes)
{
    const xcb_atom_t typeAtom = m_connection.atom(type);
    if (bytes.size() > m_largestProperty) {
        m_sends.start(requestor, property, typeAtom, bytes);
        return;
    }
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, typeAtom, 8,
        static_cast<uint32_t>(bytes.size()), bytes.constData());
}

void X11SelectionServer::encodeLater(int id, size_t index, const clipboard::PendingImage &image)
{
    m_encoder.post([this, id, index, image] {
        const auto encoded = clipboard::encodedImage(image);
        m_inbox.post([this, id, index, image, encoded] { acceptImage(id, index, image, encoded); });
    });
}

void X11SelectionServer::acceptImage(
    int id, size_t index, const clipboard::PendingImage &image, const std::optional<QByteArray> &encoded)
{
    Job &job = m_jobs[id];
    Conversion &conversion = job.conversions[index];
    --job.pendingImages;
    if (encoded)
        place(job.request.requestor, conversion.property, image.target, *encoded);
    else
        conversion.property = XCB_ATOM_NONE;
    finishIfDone(id);
    m_connection.processEvents();
}

void X11SelectionServer::finishIfDone(int id)
{
    const Job &job = m_jobs[id];
    if (job.pendingImages > 0)
        return;
    xcb_atom_t property = job.conversions.front().property;
    if (job.isMultiple) {
        // What could not be had is marked in the requestor's own list (ICCCM section 2.6.2).
        property = job.request.property;
        std::vector<xcb_atom_t> atoms;
        for (const Conversion &conversion : job.conversions)
            atoms.insert(atoms.end(), {conversion.target, conversion.property});
        x11::setAtoms(m_connection, job.request.requestor, property, m_connection.atom("ATOM_PAIR"), atoms);
    }
    x11::notifyRequestor(m_connection, job.request, property);
    m_jobs.erase(id);
}

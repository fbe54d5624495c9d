#include "platform/x11/X11Clipboard.h"

#include "base/Console.h"
#include "platform/x11/X11Backends.h"

#include <xcb/xfixes.h>

#include <algorithm>

namespace
{

using namespace std::chrono_literals;

/// A program that changes the clipboard all the time gets no more than this of the server's windows.
constexpr size_t MaximumFetches = 64;

/// Deadlines are looked at so often while a transfer runs, and never otherwise.
constexpr auto LongestTick = 50ms;

/// Between the start of a content of this program's own and the moment when others see it: the text and the
/// objects are written right after the start, and a reader that is quick would find half of it.
constexpr auto TimeToWrite = 5ms;

xcb_window_t makeOwnerWindow(X11Connection &connection)
{
    const xcb_window_t window = xcb_generate_id(connection.get());
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

/// The number of XFixes' first event, when the server has a version that tells of owners that go away.
std::optional<uint8_t> fixesEvent(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *const fixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (fixes == nullptr || fixes->present == 0)
        return std::nullopt;
    const XcbReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(connection, xcb_xfixes_query_version(connection, 5, 0), nullptr));
    return version ? std::optional(fixes->first_event) : std::nullopt;
}

template<class Event>
const Event &as(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const Event &>(event);
}

} // namespace

std::unique_ptr<X11Clipboard> X11Clipboard::open(
    ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits)
{
    auto connection = X11Connection::open();
    const auto event = connection ? fixesEvent(connection->get()) : std::nullopt;
    if (!event)
        return nullptr;
    return std::unique_ptr<X11Clipboard>(
        new X11Clipboard(std::move(connection), *event, inbox, queue, own, limits));
}

X11Clipboard::X11Clipboard(std::unique_ptr<X11Connection> connection, uint8_t fixesEvent, ThreadInbox &inbox,
    ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits)
    : m_connection(std::move(connection))
    , m_fixesEvent(fixesEvent)
    , m_queue(queue)
    , m_own(own)
    , m_limits(limits)
    , m_window(makeOwnerWindow(*m_connection))
    , m_retired(*m_connection)
    , m_server(*m_connection, inbox, limits, [this] { return served(); })
    , m_keeper(*m_connection, m_window,
          [this](xcb_timestamp_t time, X11ClipboardKeeper::Answer answer) { save(time, std::move(answer)); })
{
    m_ticks.setInterval(std::clamp<std::chrono::milliseconds>(
        std::min(limits.noProgress, limits.heldBackWithoutProgress) / 5, 1ms, LongestTick));
    QObject::connect(&m_ticks, &QTimer::timeout, &m_turns, [this] { tick(); });
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
    m_connection->onClosed = [this] { onClosed(); };
    start();
}

X11Clipboard::~X11Clipboard()
{
    m_connection->onEvent = nullptr;
    m_connection->onClosed = nullptr;
}

void X11Clipboard::start()
{
    m_connection->internAtoms({"CLIPBOARD", "CLIPBOARD_MANAGER", "TARGETS", "MULTIPLE", "TIMESTAMP", "INCR",
        "ATOM_PAIR", "SAVE_TARGETS", "NULL", "MANAGER", "LARKSPOOL_SELECTION", "LARKSPOOL_TIME",
        "UTF8_STRING", "TEXT", "text/plain;charset=utf-8", "text/plain", "text/uri-list", "text/x-moz-url",
        "text/html", "image/tiff", "image/png", clipboard::SecretHint});
    constexpr uint32_t Changes = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
    for (const char *const selection : {"CLIPBOARD", "CLIPBOARD_MANAGER"})
        xcb_xfixes_select_selection_input(
            m_connection->get(), m_window, m_connection->atom(selection), Changes);
    // From here on each change of owner is an event; this one is not.
    const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(m_connection->get(),
        xcb_get_selection_owner(m_connection->get(), m_connection->atom("CLIPBOARD")), nullptr));
    m_hasOtherOwner = owner && owner->owner != XCB_WINDOW_NONE;
    withServerTime([this](xcb_timestamp_t time) {
        m_keeper.takeIfFree(time);
        fetchInitial(time);
    });
    m_connection->processEvents();
}

/// What the clipboard holds already is content 0, unless somebody copied meanwhile.
void X11Clipboard::fetchInitial(xcb_timestamp_t time)
{
    if (m_latest == 0 && m_hasOtherOwner)
        fetch(0, time);
}

void X11Clipboard::onEvent(const xcb_generic_event_t &event)
{
    const uint8_t type = event.response_type & 0x7fU;
    if (type == m_fixesEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        onOwner(event);
    } else if (type == XCB_SELECTION_NOTIFY) {
        const auto &notify = as<xcb_selection_notify_event_t>(event);
        for (const auto &fetch : m_fetches)
            fetch->handle(notify);
        m_retired.answered(notify.requestor);
    } else if (type == XCB_PROPERTY_NOTIFY) {
        onProperty(as<xcb_property_notify_event_t>(event));
    } else if (type == XCB_SELECTION_REQUEST) {
        onRequest(as<xcb_selection_request_event_t>(event));
    } else if (type == XCB_DESTROY_NOTIFY) {
        m_server.requestorIsGone(as<xcb_destroy_notify_event_t>(event).window);
    } else if (type == 0) {
        // Nearly always a requestor that is gone.
        const auto &error = as<xcb_generic_error_t>(event);
        if (error.error_code == XCB_WINDOW)
            m_server.requestorIsGone(error.resource_id);
    }
}

void X11Clipboard::onProperty(const xcb_property_notify_event_t &event)
{
    const bool isTime = event.window == m_window && event.atom == m_connection->atom("LARKSPOOL_TIME");
    if (isTime && !m_timeUses.empty()) {
        const auto use = std::move(m_timeUses.front());
        m_timeUses.pop_front();
        use(event.time);
        return;
    }
    for (const auto &fetch : m_fetches)
        fetch->handle(event);
    m_server.handle(event);
}

void X11Clipboard::onRequest(const xcb_selection_request_event_t &event)
{
    if (event.selection == m_connection->atom("CLIPBOARD_MANAGER"))
        m_keeper.handle(event);
    else
        m_server.handle(event);
    startTicking();
}

void X11Clipboard::onOwner(const xcb_generic_event_t &event)
{
    const auto &change = as<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection == m_connection->atom("CLIPBOARD"))
        onClipboardOwner(event);
    else if (change.owner == XCB_WINDOW_NONE)
        m_keeper.takeIfFree(change.timestamp);
}

void X11Clipboard::onClipboardOwner(const xcb_generic_event_t &event)
{
    const auto &change = as<xcb_xfixes_selection_notify_event_t>(event);
    m_hasOtherOwner = change.owner != XCB_WINDOW_NONE && change.owner != m_window;
    const bool isLeft =
        change.owner == XCB_WINDOW_NONE && change.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    if (isLeft) {
        m_leftAt = change.timestamp;
        for (const auto &fetch : m_fetches) {
            if (fetch->number() == m_latest)
                fetch->ownerIsGone();
        }
        takeOverIfLeft();
        return;
    }
    leaveToOthers(event.full_sequence);
    if (change.owner == m_window) {
        m_served = m_acquiring;
        return;
    }
    m_latest = m_queue.reserve();
    m_isLatestComplete = false;
    if (m_hasOtherOwner)
        fetch(m_latest, change.timestamp);
    else
        publishCleared();
}

/// Whoever owned the clipboard does not any more.
void X11Clipboard::leaveToOthers(uint32_t sequence)
{
    m_leftAt.reset();
    for (const auto &fetch : m_fetches)
        fetch->ownerChanged(sequence);
    // The own content stays the last one that is known, until the next one is.
    if (m_served == Served::Own) {
        const auto own = m_own.snapshot();
        keep(own.number, own.content);
    }
    m_served = Served::Nothing;
}

/// Its owner gave the clipboard up on purpose: there is nothing to be kept.
void X11Clipboard::publishCleared()
{
    m_queue.fill(m_latest, {});
    keep(m_latest, {});
    m_isLatestComplete = true;
}

void X11Clipboard::fetch(qint64 number, xcb_timestamp_t time)
{
    if (m_fetches.size() >= MaximumFetches) {
        const auto oldest = std::find_if(
            m_fetches.begin(), m_fetches.end(), [](const auto &fetch) { return !fetch->hasEnded(); });
        if (oldest != m_fetches.end())
            (*oldest)->check(Time::max(), true);
    }
    m_fetches.push_back(std::make_unique<X11ContentFetch>(*m_connection, m_retired, m_limits, number,
        ContentFetch::Callbacks{[this](ContentFetch &fetch) { onReadable(fetch); },
            [this](ContentFetch &fetch) { onEnded(fetch); }}));
    m_fetches.back()->start(time);
    startTicking();
}

void X11Clipboard::onReadable(const ContentFetch &fetch)
{
    m_queue.fill(fetch.number(), clipboard::readingOf(fetch.content()));
    keep(fetch.number(), fetch.content());
}

void X11Clipboard::onEnded(const ContentFetch &fetch)
{
    if (fetch.isReadable())
        keep(fetch.number(), fetch.content());
    else
        m_queue.abandon(fetch.number());
    if (fetch.number() == m_latest)
        m_isLatestComplete = fetch.isComplete();
    sweepLater();
}

void X11Clipboard::keep(qint64 number, const ClipboardContent &content)
{
    if (number < m_keptNumber)
        return;
    m_keptNumber = number;
    m_kept = content;
}

/// Takes the clipboard over from an owner that is no more, once all that will ever come from it is there.
void X11Clipboard::takeOverIfLeft()
{
    if (!m_leftAt || isFetchingLatest() || m_kept.isEmpty())
        return;
    acquire(Served::Kept, *m_leftAt);
    m_leftAt.reset();
}

void X11Clipboard::acquire(Served served, xcb_timestamp_t time)
{
    m_acquiring = served;
    m_server.setOwnedSince(time);
    xcb_set_selection_owner(m_connection->get(), m_window, m_connection->atom("CLIPBOARD"), time);
    m_connection->flush();
}

void X11Clipboard::takeOverWithOwn()
{
    if (m_own.snapshot().number == m_acquiredOwn)
        return;
    m_acquiredOwn = m_own.snapshot().number;
    QTimer::singleShot(TimeToWrite, &m_turns, [this] {
        withServerTime([this](xcb_timestamp_t time) {
            m_leftAt.reset();
            acquire(Served::Own, time);
        });
        m_connection->processEvents();
    });
}

void X11Clipboard::save(xcb_timestamp_t time, X11ClipboardKeeper::Answer answer)
{
    // A content that was given up when it was copied gets a second chance; one that has been published does
    // not, since it would be a new copy.
    if (m_hasOtherOwner && m_keptNumber != m_latest && !isFetchingLatest()) {
        m_latest = m_queue.reserve();
        fetch(m_latest, time);
    }
    m_saveAnswers.push_back(std::move(answer));
    sweepLater();
}

bool X11Clipboard::isFetchingLatest() const
{
    return std::any_of(m_fetches.begin(), m_fetches.end(),
        [this](const auto &fetch) { return fetch->number() == m_latest && !fetch->hasEnded(); });
}

/// The server's time comes with an event for a change of a property, also one by nothing (ICCCM section 2.1).
void X11Clipboard::withServerTime(std::function<void(xcb_timestamp_t)> use)
{
    m_timeUses.push_back(std::move(use));
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_APPEND, m_window,
        m_connection->atom("LARKSPOOL_TIME"), XCB_ATOM_STRING, 8, 0, nullptr);
}

ClipboardContent X11Clipboard::served() const
{
    return m_served == Served::Own ? m_own.snapshot().content : m_kept;
}

void X11Clipboard::sweepLater()
{
    QTimer::singleShot(0, &m_turns, [this] { sweep(); });
}

/// What has ended goes here, since it ends in the middle of its own work.
void X11Clipboard::sweep()
{
    m_fetches.remove_if([](const auto &fetch) { return fetch->hasEnded(); });
    takeOverIfLeft();
    if (!isFetchingLatest()) {
        const bool isLatestKept = m_isLatestComplete && m_keptNumber == m_latest && !m_kept.isEmpty();
        const bool isSaved = m_served != Served::Nothing || isLatestKept;
        for (const auto &answer : std::exchange(m_saveAnswers, {}))
            answer(isSaved);
    }
    m_connection->processEvents();
}

void X11Clipboard::tick()
{
    const auto now = std::chrono::steady_clock::now();
    for (const auto &fetch : m_fetches)
        fetch->check(now, !fetch->isReadable() && m_queue.holdsBack(fetch->number()));
    m_retired.check(now);
    m_server.check(now);
    if (m_fetches.empty() && m_retired.isEmpty() && m_server.isIdle())
        m_ticks.stop();
    m_connection->processEvents();
}

void X11Clipboard::startTicking()
{
    if (!m_ticks.isActive())
        m_ticks.start();
}

void X11Clipboard::onClosed()
{
    consoleLine(QStringLiteral("[Larkspool] The X server is gone: the clipboard is not followed any more"));
    m_ticks.stop();
    for (const auto &fetch : m_fetches)
        fetch->ownerIsGone();
}

std::unique_ptr<Pasteboard> platform::makeX11Pasteboard(const ClipboardLimits &limits)
{
    return ThreadedPasteboard::start(
        [limits](ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own) {
            return X11Clipboard::open(inbox, queue, own, limits);
        });
}

#include "platform/wayland/WaylandClipboard.h"

#include "base/Console.h"
#include "platform/linux/ClipboardOffer.h"

#include <QRandomGenerator>

#include <algorithm>
#include <csignal>
#include <utility>

namespace
{

using namespace std::chrono_literals;
using Time = std::chrono::steady_clock::time_point;

/// A program that changes the clipboard all the time gets no more than this of pipes.
constexpr size_t MaximumFetches = 64;

/// Pictures that wait to be encoded; each may be large, and anybody may ask.
constexpr int MaximumPendingImages = 64;

/// Deadlines are looked at so often while a transfer runs, and never otherwise.
constexpr auto LongestTick = 50ms;

/// Between the start of a content of this program's own and the moment when others see it: the text and the
/// objects are written right after the start.
constexpr auto TimeToWrite = 5ms;

/// How long a program may still run after its window has gone, and the news of the window may be late.
constexpr auto LongestEnd = 3s;
constexpr auto LatestNews = 500ms;

/// A reader that goes away in the middle shows as an error of writing.
void ignoreBrokenPipes()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

/// The clipboard of one seat, and what is being done about it.
struct WaylandClipboard::Seat {
    std::unique_ptr<DataControlDevice> device;
    /// While it is what is on the clipboard.
    std::unique_ptr<DataControlSource> source;
    /// Whether that is this program's own content.
    bool servesOwn = false;
    std::list<std::unique_ptr<WaylandContentFetch>> fetches;
    /// The number of what others have put there last.
    qint64 latest = -1;
    /// Since when it is empty, while nothing has been done about that.
    std::optional<Time> leftAt;
    /// The kept content that has been put there, so that nobody is fought who clears it again.
    qint64 takenOverWith = -1;

    bool isFetchingLatest() const
    {
        return std::ranges::any_of(
            fetches, [this](const auto &fetch) { return fetch->number() == latest && !fetch->hasEnded(); });
    }
};

std::unique_ptr<WaylandClipboard> WaylandClipboard::open(
    ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits)
{
    auto connection = WaylandConnection::open();
    const DataControlProtocol *const protocol =
        connection ? DataControlProtocol::offeredBy(*connection) : nullptr;
    if (protocol == nullptr)
        return nullptr;
    ignoreBrokenPipes();
    const WaylandGlobal manager = *connection->global(protocol->manager().name);
    std::unique_ptr<WaylandClipboard> clipboard(
        new WaylandClipboard(std::move(connection), *protocol, manager, inbox, queue, own, limits));
    // What the clipboard holds already is content 0.
    clipboard->m_connection->roundTrip();
    clipboard->m_isStarting = false;
    return clipboard;
}

WaylandClipboard::WaylandClipboard(std::unique_ptr<WaylandConnection> connection,
    const DataControlProtocol &protocol, const WaylandGlobal &manager, ThreadInbox &inbox,
    ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits)
    : m_connection(std::move(connection))
    , m_protocol(protocol)
    , m_inbox(inbox)
    , m_queue(queue)
    , m_own(own)
    , m_limits(limits)
    , m_mark(
          "application/x-larkspool;own=" + QByteArray::number(QRandomGenerator::system()->generate64(), 16))
    , m_manager(m_connection->bind(manager, protocol.manager(), protocol.version()),
          DataControlProtocol::DestroyManager)
    , m_writers(limits.stalledReceiver)
    , m_windows(WaylandToplevels::open())
{
    if (m_windows)
        m_windows->onRemoved = [this] { onWindowClosed(); };
    m_ticks.setInterval(std::clamp<std::chrono::milliseconds>(
        std::min(limits.noProgress, limits.heldBackWithoutProgress) / 5, 1ms, LongestTick));
    QObject::connect(&m_ticks, &QTimer::timeout, &m_turns, [this] { tick(); });
    m_ownIsWritten.setInterval(TimeToWrite);
    m_ownIsWritten.setSingleShot(true);
    QObject::connect(&m_ownIsWritten, &QTimer::timeout, &m_turns, [this] { offerOwn(); });
    m_newsIsOver.setInterval(LatestNews);
    m_newsIsOver.setSingleShot(true);
    QObject::connect(&m_newsIsOver, &QTimer::timeout, &m_turns, [this] { forgetCleared(); });
    m_connection->onGlobal = [this](const WaylandGlobal &global) { addSeat(global); };
    m_connection->onGlobalRemoved = [this](uint32_t name) { removeSeat(name); };
    m_connection->onClosed = [this] { onClosed(); };
    for (const WaylandGlobal &global : m_connection->globals())
        addSeat(global);
}

WaylandClipboard::~WaylandClipboard()
{
    m_connection->onClosed = nullptr;
}

void WaylandClipboard::addSeat(const WaylandGlobal &global)
{
    if (global.interface != "wl_seat")
        return;
    m_seats.push_back(std::make_unique<Seat>());
    Seat &seat = *m_seats.back();
    const uint32_t name = global.name;
    seat.device = std::make_unique<DataControlDevice>(*m_connection, m_manager, m_protocol, global,
        DataControlDevice::Callbacks{[this, &seat](const Offer &offer) { onSelection(seat, offer); },
            [this, name] { removeSeat(name); }});
}

void WaylandClipboard::removeSeat(uint32_t name)
{
    const auto isIt = [name](const auto &seat) { return seat->device->seatName() == name; };
    const auto found = std::ranges::find_if(m_seats, isIt);
    if (found == m_seats.end())
        return;
    // Nothing waits for what will not come.
    for (const auto &fetch : (*found)->fetches)
        fetch->check(Time::max(), true);
    m_seats.erase(found);
}

void WaylandClipboard::onSelection(Seat &seat, const Offer &offer)
{
    for (const auto &fetch : seat.fetches)
        fetch->offerIsOver();
    seat.leftAt.reset();
    if (offer == nullptr) {
        seat.leftAt = std::chrono::steady_clock::now();
        m_newsIsOver.start();
        takeOverLater();
        return;
    }
    if (offer->types().contains(m_mark))
        return;
    // What the first seat holds already is content 0; what the others hold is nobody's copy of now.
    if (m_isStarting && std::exchange(m_hasInitial, true))
        return;
    seat.latest = m_isStarting ? 0 : m_queue.reserve();
    fetch(seat, seat.latest, offer);
}

void WaylandClipboard::fetch(Seat &seat, qint64 number, const Offer &offer)
{
    if (seat.fetches.size() >= MaximumFetches) {
        const auto oldest =
            std::ranges::find_if(seat.fetches, [](const auto &candidate) { return !candidate->hasEnded(); });
        if (oldest != seat.fetches.end())
            (*oldest)->check(Time::max(), true);
    }
    seat.fetches.push_back(std::make_unique<WaylandContentFetch>(*m_connection, m_limits, number, offer,
        ContentFetch::Callbacks{[this](ContentFetch &fetch) { onReadable(fetch); },
            [this](ContentFetch &fetch) { onEnded(fetch); }}));
    seat.fetches.back()->start();
    startTicking();
}

void WaylandClipboard::onReadable(const ContentFetch &fetch)
{
    m_queue.fill(fetch.number(), clipboard::readingOf(fetch.content()));
    keep(fetch.number(), fetch.content());
}

void WaylandClipboard::onEnded(const ContentFetch &fetch)
{
    if (fetch.isReadable())
        keep(fetch.number(), fetch.content());
    else
        m_queue.abandon(fetch.number());
    // What has ended goes later, since it ends in the middle of its own work.
    QTimer::singleShot(0, &m_turns, [this] { sweep(); });
}

void WaylandClipboard::keep(qint64 number, const ClipboardContent &content)
{
    if (number < m_keptNumber)
        return;
    m_keptNumber = number;
    m_kept = content;
}

void WaylandClipboard::onWindowClosed()
{
    m_windowClosedAt = std::chrono::steady_clock::now();
    takeOverLater();
}

bool WaylandClipboard::isOwnerGone(const Seat &seat) const
{
    if (!m_windows)
        return true;
    const auto since = *seat.leftAt - m_windowClosedAt;
    return since <= LongestEnd && since >= -LatestNews;
}

/// Somebody has emptied the clipboard on purpose: what it held is not to come back.
void WaylandClipboard::forgetCleared()
{
    for (const auto &seat : m_seats) {
        if (!seat->leftAt || isOwnerGone(*seat))
            continue;
        seat->leftAt.reset();
        m_kept = {};
    }
}

/// When the news that is on its way has come: somebody else may have copied.
void WaylandClipboard::takeOverLater()
{
    if (std::ranges::none_of(m_seats, [](const auto &seat) { return seat->leftAt.has_value(); }))
        return;
    m_connection->sync([this] {
        for (const auto &seat : m_seats)
            takeOverIfLeft(*seat);
    });
}

/// Takes the clipboard over from an owner that is no more, once all that will ever come from it is there.
void WaylandClipboard::takeOverIfLeft(Seat &seat)
{
    if (!seat.leftAt || seat.isFetchingLatest() || m_kept.isEmpty() || !isOwnerGone(seat) ||
        seat.takenOverWith == m_keptNumber)
        return;
    seat.leftAt.reset();
    seat.takenOverWith = m_keptNumber;
    offerTo(seat, m_kept);
}

void WaylandClipboard::takeOverWithOwn()
{
    m_isTakingOver = true;
    m_ownIsWritten.start();
}

void WaylandClipboard::ownContentChanged()
{
    if (!m_ownIsWritten.isActive())
        m_ownIsWritten.start();
}

void WaylandClipboard::offerOwn()
{
    const auto own = m_own.snapshot();
    keep(own.number, own.content);
    if (!std::exchange(m_isTakingOver, false)) {
        m_connection->sync([this] { offerAdditions(); });
        return;
    }
    for (const auto &seat : m_seats) {
        seat->leftAt.reset();
        offerTo(*seat, own.content);
        seat->servesOwn = true;
    }
}

/// What is only added to the content takes nothing back from whoever has copied since.
void WaylandClipboard::offerAdditions()
{
    const auto own = m_own.snapshot();
    for (const auto &seat : m_seats) {
        if (!seat->servesOwn)
            continue;
        offerTo(*seat, own.content);
        seat->servesOwn = true;
    }
}

void WaylandClipboard::offerTo(Seat &seat, const ClipboardContent &content)
{
    QByteArrayList types = clipboard::offeredTargets(content);
    types.append(m_mark);
    auto source = std::make_unique<DataControlSource>(m_manager, m_protocol.source(), types,
        DataControlSource::Callbacks{[this, content](const QByteArray &type, FileDescriptor pipe) {
                                         send(content, type, std::move(pipe));
                                     },
            [&seat] {
                seat.source.reset();
                seat.servesOwn = false;
            }});
    seat.device->setSelection(*source);
    // The one before goes after that: the clipboard would be empty in between.
    seat.source = std::move(source);
    seat.servesOwn = false;
    m_connection->flush();
}

void WaylandClipboard::send(const ClipboardContent &content, const QByteArray &type, FileDescriptor pipe)
{
    const clipboard::Answer answer = clipboard::answerFor(content, type);
    if (const auto *const rendering = std::get_if<clipboard::Rendering>(&answer)) {
        m_writers.start(std::move(pipe), rendering->bytes);
        startTicking();
        return;
    }
    const auto *const image = std::get_if<clipboard::PendingImage>(&answer);
    if (image == nullptr || m_pendingImages >= MaximumPendingImages)
        return;
    ++m_pendingImages;
    m_encoder.post([this, image = *image, shared = std::make_shared<FileDescriptor>(std::move(pipe))] {
        const auto encoded = clipboard::encodedImage(image);
        m_inbox.post([this, encoded, shared] {
            --m_pendingImages;
            m_writers.start(std::move(*shared), encoded.value_or(QByteArray()));
            startTicking();
        });
    });
}

void WaylandClipboard::sweep()
{
    for (const auto &seat : m_seats)
        seat->fetches.remove_if([](const auto &fetch) { return fetch->hasEnded(); });
    takeOverLater();
}

void WaylandClipboard::tick()
{
    const auto now = std::chrono::steady_clock::now();
    bool isIdle = true;
    for (const auto &seat : m_seats) {
        for (const auto &fetch : seat->fetches)
            fetch->check(now, !fetch->isReadable() && m_queue.holdsBack(fetch->number()));
        isIdle = isIdle && seat->fetches.empty();
    }
    m_writers.check(now);
    if (isIdle && m_writers.isEmpty())
        m_ticks.stop();
}

void WaylandClipboard::startTicking()
{
    if (!m_ticks.isActive())
        m_ticks.start();
}

/// What owners are writing already may still come.
void WaylandClipboard::onClosed()
{
    consoleLine(QStringLiteral("[Larkspool] The compositor is gone: the clipboard is not followed any more"));
    for (const auto &seat : m_seats) {
        for (const auto &fetch : seat->fetches)
            fetch->offerIsOver();
    }
}

#include "platform/wayland/WaylandPrimaryText.h"

#include "platform/linux/ClipboardOffer.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ClipboardTargets.h"

#include <utility>

std::unique_ptr<WaylandPrimaryText> WaylandPrimaryText::open(WaylandConnection &connection)
{
    const DataControlProtocol *const protocol = DataControlProtocol::offeredBy(connection);
    if (protocol == nullptr || !connection.global("wl_seat"))
        return nullptr;
    const WaylandGlobal manager = *connection.global(protocol->manager().name);
    return std::unique_ptr<WaylandPrimaryText>(new WaylandPrimaryText(connection, *protocol, manager));
}

WaylandPrimaryText::WaylandPrimaryText(
    WaylandConnection &connection, const DataControlProtocol &protocol, const WaylandGlobal &manager)
    : m_connection(connection)
    , m_protocol(protocol)
    , m_manager(connection.bind(manager, protocol.manager(), protocol.version()),
          DataControlProtocol::DestroyManager)
    , m_device(connection, m_manager, protocol, *connection.global("wl_seat"),
          {[this](std::shared_ptr<DataControlOffer> offer) { m_selection = std::move(offer); },
              [this] { m_selection.reset(); }})
    , m_writers(ClipboardLimits().stalledReceiver)
{
    m_ticks.setInterval(ClipboardLimits().stalledReceiver);
    QObject::connect(&m_ticks, &QTimer::timeout, &m_ticks, [this] {
        m_writers.check(std::chrono::steady_clock::now());
        if (m_writers.isEmpty())
            m_ticks.stop();
    });
}

WaylandPrimaryText::~WaylandPrimaryText() = default;

void WaylandPrimaryText::takeClipboard(std::function<void(bool isTaken)> onDone)
{
    const QByteArrayList texts =
        m_selection ? clipboard::fetchPlan(m_selection->types()).texts : QByteArrayList();
    FileDescriptor pipe = texts.isEmpty() ? FileDescriptor() : m_selection->receive(texts.front());
    if (!pipe.isOpen()) {
        onDone(false);
        return;
    }
    m_connection.flush();
    m_onDone = std::move(onDone);
    m_reader = std::make_unique<PipeReader>(std::move(pipe), ClipboardLimits().target,
        PipeReader::Callbacks{[](qint64) {},
            [this, target = texts.front()](PipeReader::Outcome outcome, const QByteArray &bytes) {
                received(QByteArray(target), outcome, bytes);
            }});
}

void WaylandPrimaryText::received(
    const QByteArray &target, PipeReader::Outcome outcome, const QByteArray &bytes)
{
    m_reader.reset();
    ClipboardContent content;
    content.insert(target, bytes);
    const auto text = clipboard::text(content);
    // A pipe that closes empty: its owner is gone, or does not have the text.
    const bool isTaken = outcome == PipeReader::Outcome::Delivered && text && !text->isEmpty();
    if (isTaken)
        offer(*text);
    const auto onDone = std::exchange(m_onDone, nullptr);
    onDone(isTaken);
}

void WaylandPrimaryText::cancel()
{
    m_reader.reset();
    m_onDone = nullptr;
}

void WaylandPrimaryText::offer(const QByteArray &text)
{
    ClipboardContent content;
    content.insert(clipboard::Utf8PlainText, text);
    auto source = std::make_unique<DataControlSource>(m_manager, m_protocol.source(),
        clipboard::offeredTargets(content),
        DataControlSource::Callbacks{[this, content](const QByteArray &type, FileDescriptor pipe) {
                                         send(content, type, std::move(pipe));
                                     },
            [this] { m_source.reset(); }});
    m_device.setPrimarySelection(*source);
    m_source = std::move(source);
}

void WaylandPrimaryText::send(const ClipboardContent &content, const QByteArray &type, FileDescriptor pipe)
{
    const auto answer = clipboard::answerFor(content, type);
    if (const auto *const rendering = std::get_if<clipboard::Rendering>(&answer)) {
        m_writers.start(std::move(pipe), rendering->bytes);
        m_ticks.start();
    }
}

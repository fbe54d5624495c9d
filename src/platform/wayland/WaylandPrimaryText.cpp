#include "platform/wayland/WaylandPrimaryText.h"

#include "platform/linux/ClipboardOffer.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ClipboardTargets.h"

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
}

WaylandPrimaryText::~WaylandPrimaryText() = default;

void WaylandPrimaryText::takeClipboard(std::function<void(bool isTaken)> onDone)
{
    m_writers.check(std::chrono::steady_clock::now());
    const QByteArrayList texts =
        m_selection ? clipboard::fetchPlan(m_selection->types()).texts : QByteArrayList();
    FileDescriptor pipe = texts.isEmpty() ? FileDescriptor() : m_selection->receive(texts.front());
    if (!pipe.isOpen()) {
        onDone(false);
        return;
    }
    m_connection.flush();
    m_reader = std::make_unique<PipeReader>(std::move(pipe), ClipboardLimits().target,
        PipeReader::Callbacks{[](qint64) {},
            [this, target = texts.front(), onDone = std::move(onDone)](
                PipeReader::Outcome outcome, const QByteArray &bytes) {
                ClipboardContent content;
                content.insert(target, bytes);
                const auto text = clipboard::text(content);
                const bool isTaken = outcome == PipeReader::Outcome::Delivered && text;
                if (isTaken)
                    offer(*text);
                onDone(isTaken);
            }});
}

void WaylandPrimaryText::cancel()
{
    m_reader.reset();
}

void WaylandPrimaryText::offer(const QByteArray &text)
{
    ClipboardContent content;
    content.insert(clipboard::Utf8PlainText, text);
    auto source = std::make_unique<DataControlSource>(m_manager, m_protocol.source(),
        clipboard::offeredTargets(content),
        DataControlSource::Callbacks{[this, content](const QByteArray &type, FileDescriptor pipe) {
                                         const auto answer = clipboard::answerFor(content, type);
                                         if (const auto *const rendering =
                                                 std::get_if<clipboard::Rendering>(&answer))
                                             m_writers.start(std::move(pipe), rendering->bytes);
                                     },
            [this] { m_source.reset(); }});
    m_device.setPrimarySelection(*source);
    m_source = std::move(source);
}

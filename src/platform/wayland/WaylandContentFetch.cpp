#include "platform/wayland/WaylandContentFetch.h"

WaylandContentFetch::WaylandContentFetch(WaylandConnection &connection, const ClipboardLimits &limits,
    qint64 number, std::shared_ptr<DataControlOffer> offer, Callbacks callbacks)
    : ContentFetch(limits, number, std::move(callbacks))
    , m_connection(connection)
    , m_offer(std::move(offer))
{
}

WaylandContentFetch::~WaylandContentFetch()
{
    *m_isAlive = false;
}

void WaylandContentFetch::start()
{
    follow(clipboard::fetchPlan(m_offer->types()));
}

void WaylandContentFetch::offerIsOver()
{
    if (hasEnded())
        return;
    supersede();
    if (isBeginning() || isReadable())
        end(false);
}

void WaylandContentFetch::request(const QByteArray &target, qint64 limit)
{
    m_target = target;
    FileDescriptor pipe = m_offer->receive(target);
    if (!pipe.isOpen()) {
        end(false);
        return;
    }
    m_connection.flush();
    m_reader = std::make_unique<PipeReader>(std::move(pipe), limit,
        PipeReader::Callbacks{[this](qint64 bytes) { progressed(bytes); },
            [this](PipeReader::Outcome outcome, const QByteArray &bytes) { received(outcome, bytes); }});
}

void WaylandContentFetch::received(PipeReader::Outcome outcome, const QByteArray &bytes)
{
    m_reader.reset();
    if (hasEnded())
        return;
    if (outcome == PipeReader::Outcome::TooLarge)
        accept({Outcome::TooLarge, m_target, {}, bytes.size()});
    else if (outcome == PipeReader::Outcome::Failed)
        accept({Outcome::Refused, m_target, {}, 0});
    else if (bytes.isEmpty())
        receivedNothing();
    else
        accept({Outcome::Delivered, m_target, bytes, bytes.size()});
}

/// A pipe that closes empty is an empty text, or a request that came after the content had gone from the
/// clipboard: that news is on its way then. The compositor may see the first question before what the owner
/// has sent it earlier, but not the second one.
void WaylandContentFetch::receivedNothing()
{
    m_connection.sync([this, isAlive = m_isAlive] {
        if (*isAlive)
            m_connection.sync([this, isAlive] {
                if (*isAlive)
                    acceptNothing();
            });
    });
}

void WaylandContentFetch::acceptNothing()
{
    if (hasEnded())
        return;
    if (isSuperseded())
        end(false);
    else
        // An owner that lists more encodings than it has refuses in this way, too.
        accept({hasOtherTexts() ? Outcome::Refused : Outcome::Delivered, m_target, {}, 0});
}

#pragma once

#include "platform/linux/ContentFetch.h"
#include "platform/wayland/DataControlOffer.h"
#include "platform/wayland/PipeReader.h"
#include "platform/wayland/WaylandConnection.h"

/// Fetches one content of the clipboard through an offer, a pipe for each type. `start` in place of `follow`.
/// A pipe has no length: what an owner has written when it closes it is taken for all of it, also of one that
/// dies in the middle.
class WaylandContentFetch : public ContentFetch
{
public:
    WaylandContentFetch(WaylandConnection &connection, const ClipboardLimits &limits, qint64 number,
        std::shared_ptr<DataControlOffer> offer, Callbacks callbacks);
    ~WaylandContentFetch() override;

    void start();

    /// The clipboard has another content, or none: nothing more can be asked. What its owner is writing
    /// already may still come.
    void offerIsOver();

private:
    void request(const QByteArray &target, qint64 limit) override;
    void received(PipeReader::Outcome outcome, const QByteArray &bytes);
    void receivedNothing();
    void acceptNothing();

    WaylandConnection &m_connection;
    const std::shared_ptr<DataControlOffer> m_offer;
    QByteArray m_target;
    std::unique_ptr<PipeReader> m_reader;
    /// Whether this object is still there when the compositor answers.
    const std::shared_ptr<bool> m_isAlive = std::make_shared<bool>(true);
};

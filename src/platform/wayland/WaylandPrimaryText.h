#pragma once

#include "platform/linux/ClipboardContent.h"
#include "platform/wayland/DataControlDevice.h"
#include "platform/wayland/PipeReader.h"
#include "platform/wayland/PipeWriters.h"

#include <QTimer>

/// Offers the clipboard's text as the primary selection too, for programs that paste nothing else with
/// Shift+Insert. Main thread.
class WaylandPrimaryText
{
public:
    /// Null when the compositor lets no program without a window do that. The connection must outlive it.
    static std::unique_ptr<WaylandPrimaryText> open(WaylandConnection &connection);
    ~WaylandPrimaryText();

    /// Calls `onDone` once: whether the primary selection has the clipboard's text now. A call before that is
    /// over takes its place, and drops its `onDone`.
    void takeClipboard(std::function<void(bool isTaken)> onDone);
    void cancel();

private:
    WaylandPrimaryText(
        WaylandConnection &connection, const DataControlProtocol &protocol, const WaylandGlobal &manager);
    void received(const QByteArray &target, PipeReader::Outcome outcome, const QByteArray &bytes);
    void offer(const QByteArray &text);
    void send(const ClipboardContent &content, const QByteArray &type, FileDescriptor pipe);

    WaylandConnection &m_connection;
    const DataControlProtocol &m_protocol;
    WaylandObject m_manager;
    std::shared_ptr<DataControlOffer> m_selection;
    DataControlDevice m_device;
    std::unique_ptr<PipeReader> m_reader;
    std::function<void(bool isTaken)> m_onDone;
    std::unique_ptr<DataControlSource> m_source;
    PipeWriters m_writers;
    QTimer m_ticks; ///< runs while somebody reads
};

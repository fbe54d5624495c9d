#pragma once

#include "platform/wayland/DataControlDevice.h"
#include "platform/wayland/PipeWriters.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

/// How a test's owner delivers a type.
struct PipedValue {
    enum class Delivery {
        AtOnce,
        Never, ///< the pipe stays open, and nothing comes
        ClosedAtOnce,
        Stalled, ///< the first half comes, and the pipe stays open
    };

    PipedValue(const char *text)
        : bytes(text)
    {
    }
    PipedValue(QByteArray value, Delivery how = Delivery::AtOnce)
        : bytes(std::move(value))
        , delivery(how)
    {
    }

    QByteArray bytes;
    Delivery delivery = Delivery::AtOnce;
};

/// A program that puts something on a compositor's clipboard, well-behaved or not: on a connection of its
/// own, driven by the test's event loop.
class ClipboardOwner
{
public:
    using Offer = std::map<QByteArray, PipedValue>;

    /// Of the seats in their order. Null when there is no such seat, or the compositor has no clipboard for
    /// programs without a window.
    static std::unique_ptr<ClipboardOwner> open(size_t seat = 0);
    ~ClipboardOwner();

    /// Puts it on the clipboard; over when the compositor has it.
    void own(const Offer &offer);
    /// Makes it the primary selection instead.
    void ownPrimary(const Offer &offer);
    /// Empties the clipboard on purpose.
    void clear();

    /// What was asked for, in order.
    const QByteArrayList &requests() const { return m_requests; }
    /// Something else is on the clipboard.
    bool hasLost() const { return m_hasLost; }
    /// Whether it has written all that it is to write.
    bool hasWritten() const { return m_writers.isEmpty(); }
    /// Whether nobody reads any more from the pipes that this program keeps open.
    bool isGivenUp() const;

    /// The types that are on the clipboard, whoever put them there; nothing when it is empty.
    std::optional<QByteArrayList> types() const;
    /// The bytes of a type as this program gets them; nothing when they do not come.
    std::optional<QByteArray> paste(const QByteArray &type);
    /// The same of the primary selection.
    std::optional<QByteArray> pastePrimary(const QByteArray &type);
    /// The types of each content that has been on the clipboard since it was opened, the one at hand then
    /// included; none for an empty clipboard.
    const std::vector<QByteArrayList> &history() const { return m_history; }

    /// Asks for a type, and takes nothing of what comes.
    void stall(const QByteArray &type);
    /// Whether something has come.
    bool hasStalledBytes() const;
    /// Takes what comes after all, until the other side is done.
    QByteArray takeStalled();
    /// Whether the other side has given up on that, or is done.
    bool isStalledPipeClosed() const;

private:
    class PrimarySelection;

    ClipboardOwner(std::unique_ptr<WaylandConnection> connection, const WaylandGlobal &seat);
    void onSelection(std::shared_ptr<DataControlOffer> offer);
    std::unique_ptr<DataControlSource> makeSource(const Offer &offer);
    void send(const PipedValue &value, FileDescriptor pipe);
    std::optional<QByteArray> readAll(FileDescriptor pipe);

    const std::unique_ptr<WaylandConnection> m_connection;
    const DataControlProtocol &m_protocol;
    WaylandObject m_manager;
    std::shared_ptr<DataControlOffer> m_selection;
    std::vector<QByteArrayList> m_history;
    DataControlDevice m_device;
    std::unique_ptr<PrimarySelection> m_primary;
    std::unique_ptr<DataControlSource> m_source;
    PipeWriters m_writers;
    std::vector<FileDescriptor> m_openPipes;
    FileDescriptor m_stalledPipe;
    QByteArrayList m_requests;
    bool m_hasLost = false;
};

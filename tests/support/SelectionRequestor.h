#pragma once

#include "platform/x11/X11Connection.h"

#include <QByteArrayList>

#include <map>
#include <optional>
#include <vector>

/// A client that pastes: on a connection of its own, driven by the test's event loop.
class SelectionRequestor
{
public:
    struct Reply {
        bool isRefused = false;
        bool wasIncremental = false;
        QByteArray type;
        QByteArray bytes;
    };

    explicit SelectionRequestor(QByteArray selection = "CLIPBOARD");
    ~SelectionRequestor();

    /// Asks; the answer is in `reply` some time later.
    void request(const QByteArray &target);
    /// Asks for several with one MULTIPLE; the answers are in `reply` when `hasMultiple` says so.
    void requestMultiple(const QByteArrayList &targets);
    std::optional<Reply> reply(const QByteArray &target) const;
    /// Whether MULTIPLE was answered, and all of its incremental transfers are there.
    bool hasMultiple() const;

    /// Asks and waits for the answer.
    Reply paste(const QByteArray &target);
    /// What the owner offers, without the protocol's own TARGETS, MULTIPLE and TIMESTAMP.
    QByteArrayList targets();
    /// The window that owns the selection, None when nobody does.
    xcb_window_t owner();
    /// Whether the owner of the selection watches this client's window: it does while a transfer goes on.
    bool isWatched();

    /// Takes the announcement of an incremental transfer, and then nothing more.
    bool stalls = false;
    /// Leaves the property to the owner, as clients from before the ICCCM do.
    bool isObsolete = false;

private:
    struct Transfer {
        QByteArray target;
        Reply reply;
        bool isIncremental = false;
        bool isDone = false;
    };

    xcb_atom_t propertyFor(const QByteArray &target);
    void onEvent(const xcb_generic_event_t &event);
    void onAnswer(const xcb_selection_notify_event_t &event);
    void onMultiple(xcb_atom_t property);
    void onChunk(xcb_atom_t property);
    void readAnswer(xcb_atom_t property, Transfer &transfer);
    XcbReply<xcb_get_property_reply_t> read(xcb_atom_t property);

    const QByteArray m_selection;
    std::unique_ptr<X11Connection> m_connection;
    xcb_window_t m_window;
    std::map<xcb_atom_t, Transfer> m_transfers; // by property
    std::optional<bool> m_isMultipleAnswered;
};

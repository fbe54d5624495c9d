#pragma once

#include "platform/x11/X11Connection.h"

#include <QByteArrayList>
#include <QObject>

#include <chrono>
#include <map>
#include <optional>

/// How a test's owner delivers a target.
struct OfferedValue {
    enum class Delivery {
        AtOnce,
        Incremental,
        Never,   ///< the request stays without an answer
        Refused, ///< answered with property None
    };

    OfferedValue(const char *text)
        : bytes(text)
    {
    }
    OfferedValue(QByteArray value, Delivery how = Delivery::AtOnce)
        : bytes(std::move(value))
        , delivery(how)
    {
    }

    QByteArray bytes;
    Delivery delivery = Delivery::AtOnce;
    /// The property's type, when it is not the target itself.
    QByteArray type;

    /// Of incremental ones.
    qsizetype chunkBytes = 64 * 1024;
    /// What the owner says the size is; the true one unless set.
    std::optional<uint32_t> claimedBytes;
    std::chrono::milliseconds chunkDelay{0};
    /// The owner's connection ends after so many chunks.
    std::optional<int> chunksBeforeDeath;
};

/// A client that owns a selection, well-behaved or not: on a connection of its own, driven by the test's
/// event loop.
class SelectionOwner
{
public:
    using Offer = std::map<QByteArray, OfferedValue>;

    explicit SelectionOwner(Offer offer, QByteArray selection = "CLIPBOARD");
    ~SelectionOwner();

    /// Takes the selection and waits until the server has seen it.
    void own();
    /// Gives it up on purpose.
    void disown();
    /// The connection ends, and with it the window.
    void exit();
    bool hasExited() const { return !m_connection; }
    /// Somebody else has taken the selection.
    bool hasLost() const { return m_hasLost; }

    /// Ends as soon as somebody else takes the selection, as command line tools do.
    bool exitsOnLoss = false;
    /// Does not know TARGETS, like programs from before the ICCCM.
    bool refusesTargets = false;
    /// Leaves every request unanswered.
    bool isSilent = false;

    /// What was asked for, in order.
    const QByteArrayList &requests() const { return m_requests; }

    /// Asks the clipboard manager to save the content; answered when `isSaved` has a value.
    void askToSave();
    std::optional<bool> isSaved() const { return m_isSaved; }

private:
    struct Send {
        xcb_window_t requestor;
        xcb_atom_t property;
        const OfferedValue *value;
        xcb_atom_t type;
        qsizetype offset = 0;
        int chunks = 0;
    };

    void onEvent(const xcb_generic_event_t &event);
    void onRequest(const xcb_selection_request_event_t &request);
    bool place(const xcb_selection_request_event_t &request, const QByteArray &target);
    void placeTargets(const xcb_selection_request_event_t &request);
    void notify(const xcb_selection_request_event_t &request, xcb_atom_t property);
    void onDeleted(const xcb_property_notify_event_t &event);
    void sendChunk(size_t index);

    const Offer m_offer;
    const QByteArray m_selection;
    std::unique_ptr<X11Connection> m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    QByteArrayList m_requests;
    std::vector<Send> m_sends;
    bool m_hasLost = false;
    std::optional<bool> m_isSaved;
    QObject m_turns;
};

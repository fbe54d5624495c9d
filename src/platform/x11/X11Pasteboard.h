#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/ClipboardPace.h"

#include <memory>

/// The CLIPBOARD selection of an X server as the general pasteboard (ICCCM section 2). All work with the
/// server and with other clients is done on a thread of its own, over a connection of its own.
///
/// The server going away leaves the pasteboard as it is then: contents that wait are still shown, and own
/// ones read. One line on the console says so.
class X11Pasteboard : public Pasteboard
{
public:
    /// The pasteboard of the server that $DISPLAY names; null when there is none, or it lacks the XFixes
    /// extension. Waits for the server to take the connection, and for nothing else.
    static std::unique_ptr<X11Pasteboard> open(const ClipboardLimits &limits = {});
    ~X11Pasteboard() override;

    qint64 changeCount() const override;
    bool advance() override;
    std::vector<PasteboardItem> pasteboardItems() const override;
    std::optional<QByteArray> data(PasteboardType type) const override;
    std::optional<QByteArray> pngRepresentation(PasteboardType type) const override;
    void clearContents() override;
    void setString(const QByteArray &string) override;
    void writeObjects(const std::vector<PasteboardObject> &objects) override;

private:
    class Thread;

    explicit X11Pasteboard(std::unique_ptr<Thread> thread);

    const std::unique_ptr<Thread> m_thread;
};

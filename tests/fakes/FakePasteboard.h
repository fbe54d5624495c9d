#pragma once

#include "platform/Pasteboard.h"

#include <QByteArrayList>

#include <deque>

/// A pasteboard in memory. "Other programs" copy with `copy`.
class FakePasteboard : public Pasteboard
{
public:
    /// What another program writes, by type.
    using Content = std::map<PasteboardType, QByteArray>;

    /// Another program's copy; it waits until `advance`.
    void copy(const Content &content);
    /// Another program's copy that it marks as secret.
    void copySecret(const Content &content);

    /// How often the content was looked at beyond its number.
    int readCount() const { return m_readCount; }

    qint64 changeCount() const override { return m_changeCount; }
    bool advance() override;
    std::vector<PasteboardItem> pasteboardItems() const override;
    std::optional<QByteArray> data(PasteboardType type) const override;
    std::optional<QByteArray> pngRepresentation(PasteboardType type) const override;
    void clearContents() override;
    void setString(const QByteArray &string) override;
    void writeObjects(const std::vector<PasteboardObject> &objects) override;

private:
    struct Numbered {
        qint64 number = 0;
        Content content;
    };

    Content &ownContent();

    qint64 m_changeCount = 0;
    qint64 m_nextNumber = 1;
    Content m_current;
    std::deque<Numbered> m_waiting;
    mutable int m_readCount = 0;
};

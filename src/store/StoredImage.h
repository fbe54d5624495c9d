#pragma once

#include <QIODevice>
#include <QUuid>

#include <memory>

/// The image bytes of a saved entry, read in pieces through a connection of its own, which can only read: on
/// any thread, one at a time. It shows them as they were when it was opened, whatever happens to the row
/// since.
class StoredImage : public QIODevice
{
public:
    /// Opens the image bytes of a row, provided that it still holds the entry: numbers of rows are used
    /// again. Null when it does not, when it has no image bytes, or when the file cannot be read. Waits for
    /// the disk.
    static std::unique_ptr<StoredImage> open(const QString &storePath, qint64 rowId, const QUuid &id);
    ~StoredImage() override;

    /// In bytes.
    qint64 size() const override;

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    struct Connection;
    explicit StoredImage(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> m_connection;
};

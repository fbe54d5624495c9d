#include "store/StoredImage.h"

#include <QFile>

#include <sqlite3.h>

/// Closed in the order in which SQLite wants it: what reads the file before the connection.
struct StoredImage::Connection {
    sqlite3 *database = nullptr;
    sqlite3_blob *blob = nullptr;

    Connection() = default;
    ~Connection()
    {
        sqlite3_blob_close(blob);
        sqlite3_close(database);
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    bool open(const QString &path)
    {
        constexpr int Flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
        // Somebody who checkpoints the log holds a reader up for microseconds.
        constexpr int Patience = 100;
        return sqlite3_open_v2(QFile::encodeName(path).constData(), &database, Flags, nullptr) == SQLITE_OK &&
            sqlite3_busy_timeout(database, Patience) == SQLITE_OK &&
            // One view of the file for all that follows.
            sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    bool holds(qint64 rowId, const QUuid &id) const
    {
        sqlite3_stmt *statement = nullptr;
        constexpr auto Query = "SELECT id = ?2 FROM ClipboardItem WHERE rowid = ?1";
        if (sqlite3_prepare_v2(database, Query, -1, &statement, nullptr) != SQLITE_OK)
            return false;
        const QByteArray text = id.toByteArray(QUuid::WithoutBraces);
        sqlite3_bind_int64(statement, 1, rowId);
        sqlite3_bind_text(statement, 2, text.constData(), static_cast<int>(text.size()), SQLITE_STATIC);
        const bool isIt = sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_int(statement, 0) != 0;
        sqlite3_finalize(statement);
        return isIt;
    }

    bool openImage(qint64 rowId)
    {
        return sqlite3_blob_open(database, "main", "ClipboardItem", "imageData", rowId, 0, &blob) ==
            SQLITE_OK;
    }
};

std::unique_ptr<StoredImage> StoredImage::open(const QString &storePath, qint64 rowId, const QUuid &id)
{
    auto connection = std::make_unique<Connection>();
    if (!connection->open(storePath) || !connection->holds(rowId, id) || !connection->openImage(rowId))
        return nullptr;
    return std::unique_ptr<StoredImage>(new StoredImage(std::move(connection)));
}

StoredImage::StoredImage(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection))
{
    // SQLite's pages are the buffer.
    QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

StoredImage::~StoredImage() = default;

qint64 StoredImage::size() const
{
    return sqlite3_blob_bytes(m_connection->blob);
}

qint64 StoredImage::readData(char *data, qint64 size)
{
    const qint64 count = qBound<qint64>(0, this->size() - pos(), size);
    const int status =
        sqlite3_blob_read(m_connection->blob, data, static_cast<int>(count), static_cast<int>(pos()));
    return status == SQLITE_OK ? count : -1;
}

qint64 StoredImage::writeData(const char *, qint64)
{
    return -1;
}

#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;
struct sqlite3_blob;

/// A prepared statement; used again and again. Parameters and columns count from 1 and 0, as SQLite's do.
class Statement
{
public:
    Statement() = default;

    void bind(int parameter, qint64 value);
    void bind(int parameter, bool value) { bind(parameter, static_cast<qint64>(value)); }
    void bind(int parameter, double value);
    /// Text, UTF-8. The bytes must stay until the statement has been run.
    void bindText(int parameter, QByteArrayView utf8);
    void bind(int parameter, const QString &value);
    /// A text, or NULL for a null one.
    void bindOrNull(int parameter, const QString &value);
    void bind(int parameter, const QUuid &value);
    void bind(int parameter, const std::optional<QUuid> &value);
    /// Seconds since 1970 UTC.
    void bind(int parameter, const QDateTime &value);
    /// A blob, or NULL for a null one. The bytes must stay until the statement has been run.
    void bindBlobOrNull(int parameter, const QByteArray &value);

    /// One step: true with a row, false at the end.
    Result<bool> step();
    /// Runs it to its end, and makes it ready for the next use.
    Result<Success> run();
    /// Ready for the next use.
    void reset();

    qint64 integer(int column) const;
    double real(int column) const;
    bool isNull(int column) const;
    QByteArray bytes(int column) const;
    QString string(int column) const;
    std::optional<QString> optionalString(int column) const;
    QUuid uuid(int column) const;
    std::optional<QUuid> optionalUuid(int column) const;
    QDateTime date(int column) const;

private:
    friend class Database;
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// One value of one row, read in pieces without its row being loaded.
class BlobReader
{
public:
    qint64 size() const;
    /// Reads into the buffer; false when the row has changed since or cannot be read.
    bool read(char *buffer, qint64 size, qint64 offset) const;

private:
    friend class Database;
    struct Close {
        void operator()(sqlite3_blob *blob) const;
    };
    std::unique_ptr<sqlite3_blob, Close> m_blob;
};

/// A connection to an SQLite file. Errors are SQLite's own descriptions; they hold no values.
/// Main thread only; statements and readers must not outlive it.
class Database
{
public:
    /// Opens the file, making an empty one with mode 0600 when there is none.
    static Result<std::unique_ptr<Database>> open(const QString &filePath);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    Result<Success> execute(const char *sql);
    Result<Statement> prepare(const char *sql);
    /// The first column of the only row of a query.
    Result<qint64> integer(const char *sql);
    Result<BlobReader> openBlob(const char *table, const char *column, qint64 rowId) const;
    qint64 lastInsertRowId() const;

    /// From now on, closing the file leaves it and its log as they are.
    void leaveFileAlone();
    /// Runs the block as one transaction: all of it is durable when this returns, or none of it happened.
    Result<Success> transaction(const std::function<Result<Success>()> &block);

private:
    explicit Database(sqlite3 *database)
        : m_database(database)
    {
    }
    Error lastError() const;

    sqlite3 *m_database;
};

#include "store/Database.h"

#include <QFile>

#include <sqlite3.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

void Statement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

void Statement::bind(int parameter, qint64 value)
{
    sqlite3_bind_int64(m_statement.get(), parameter, value);
}

void Statement::bind(int parameter, double value)
{
    sqlite3_bind_double(m_statement.get(), parameter, value);
}

void Statement::bindText(int parameter, QByteArrayView utf8)
{
    // A null pointer would bind NULL; an empty text is not that.
    sqlite3_bind_text64(m_statement.get(), parameter, utf8.isEmpty() ? "" : utf8.data(),
        static_cast<sqlite3_uint64>(utf8.size()), SQLITE_STATIC, SQLITE_UTF8);
}

void Statement::bind(int parameter, const QString &value)
{
    const QByteArray utf8 = value.toUtf8();
    sqlite3_bind_text64(m_statement.get(), parameter, utf8.constData(),
        static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Statement::bindOrNull(int parameter, const QString &value)
{
    if (value.isNull())
        sqlite3_bind_null(m_statement.get(), parameter);
    else
        bind(parameter, value);
}

void Statement::bind(int parameter, const QUuid &value)
{
    bind(parameter, value.toString(QUuid::WithoutBraces));
}

void Statement::bind(int parameter, const std::optional<QUuid> &value)
{
    if (value)
        bind(parameter, *value);
    else
        sqlite3_bind_null(m_statement.get(), parameter);
}

void Statement::bind(int parameter, const QDateTime &value)
{
    bind(parameter, static_cast<double>(value.toMSecsSinceEpoch()) / 1000.0);
}

void Statement::bindBlobOrNull(int parameter, const QByteArray &value)
{
    if (value.isNull())
        sqlite3_bind_null(m_statement.get(), parameter);
    else
        sqlite3_bind_blob64(m_statement.get(), parameter, value.constData(),
            static_cast<sqlite3_uint64>(value.size()), SQLITE_STATIC);
}

Result<bool> Statement::step()
{
    const int status = sqlite3_step(m_statement.get());
    if (status == SQLITE_ROW)
        return true;
    if (status == SQLITE_DONE)
        return false;
    return Error{QString::fromUtf8(sqlite3_errmsg(sqlite3_db_handle(m_statement.get())))};
}

Result<Success> Statement::run()
{
    Result<bool> row = step();
    while (row && row.value())
        row = step();
    reset();
    if (!row)
        return row.error();
    return Success();
}

void Statement::reset()
{
    sqlite3_reset(m_statement.get());
    sqlite3_clear_bindings(m_statement.get());
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_statement.get(), column);
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

QByteArray Statement::bytes(int column) const
{
    const auto *const data = static_cast<const char *>(sqlite3_column_blob(m_statement.get(), column));
    return QByteArray(data, sqlite3_column_bytes(m_statement.get(), column));
}

QString Statement::string(int column) const
{
    const auto *const text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement.get(), column));
    return QString::fromUtf8(text, sqlite3_column_bytes(m_statement.get(), column));
}

std::optional<QString> Statement::optionalString(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(string(column));
}

QUuid Statement::uuid(int column) const
{
    return QUuid(string(column));
}

std::optional<QUuid> Statement::optionalUuid(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(uuid(column));
}

QDateTime Statement::date(int column) const
{
    return QDateTime::fromMSecsSinceEpoch(qRound64(real(column) * 1000.0), Qt::UTC);
}

void BlobReader::Close::operator()(sqlite3_blob *blob) const
{
    sqlite3_blob_close(blob);
}

qint64 BlobReader::size() const
{
    return sqlite3_blob_bytes(m_blob.get());
}

bool BlobReader::read(char *buffer, qint64 size, qint64 offset) const
{
    return sqlite3_blob_read(m_blob.get(), buffer, static_cast<int>(size), static_cast<int>(offset)) ==
        SQLITE_OK;
}

Result<std::unique_ptr<Database>> Database::open(const QString &filePath)
{
    const QByteArray path = QFile::encodeName(filePath);
    // The log and its index take the file's own mode, so the file must have it first.
    const int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor >= 0) {
        fchmod(descriptor, 0600);
        ::close(descriptor);
    }
    sqlite3 *handle = nullptr;
    const int status =
        sqlite3_open_v2(path.constData(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    auto database = std::unique_ptr<Database>(new Database(handle));
    if (status != SQLITE_OK)
        return database->lastError();
    sqlite3_extended_result_codes(handle, 1);
    // Somebody who reads the file with another program holds a writer up for microseconds.
    sqlite3_busy_timeout(handle, 100);
    return database;
}

Database::~Database()
{
    sqlite3_close_v2(m_database);
}

Error Database::lastError() const
{
    return Error{
        m_database ? QString::fromUtf8(sqlite3_errmsg(m_database)) : QStringLiteral("out of memory")};
}

Result<Success> Database::execute(const char *sql)
{
    if (sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        return lastError();
    return Success();
}

Result<Statement> Database::prepare(const char *sql)
{
    sqlite3_stmt *handle = nullptr;
    if (sqlite3_prepare_v3(m_database, sql, -1, SQLITE_PREPARE_PERSISTENT, &handle, nullptr) != SQLITE_OK)
        return lastError();
    Statement statement;
    statement.m_statement.reset(handle);
    return statement;
}

Result<qint64> Database::integer(const char *sql)
{
    auto statement = prepare(sql);
    if (!statement)
        return statement.error();
    const auto row = statement.value().step();
    if (!row)
        return row.error();
    return row.value() ? statement.value().integer(0) : 0;
}

Result<BlobReader> Database::openBlob(const char *table, const char *column, qint64 rowId) const
{
    sqlite3_blob *handle = nullptr;
    if (sqlite3_blob_open(m_database, "main", table, column, rowId, 0, &handle) != SQLITE_OK)
        return lastError();
    BlobReader reader;
    reader.m_blob.reset(handle);
    return reader;
}

qint64 Database::lastInsertRowId() const
{
    return sqlite3_last_insert_rowid(m_database);
}

void Database::leaveFileAlone()
{
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

Result<Success> Database::transaction(const std::function<Result<Success>()> &block)
{
    if (const auto begun = execute("BEGIN IMMEDIATE"); !begun)
        return begun.error();
    auto outcome = block();
    if (outcome)
        outcome = execute("COMMIT");
    if (!outcome)
        (void)execute("ROLLBACK");
    return outcome;
}

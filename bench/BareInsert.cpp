#include "bench/BareInsert.h"

#include "bench/HistoryFixture.h"

#include <QFile>

#include <sqlite3.h>

#include <cstdlib>

struct BareInsert::Handles {
    sqlite3 *database = nullptr;
    sqlite3_stmt *insert = nullptr;

    void execute(const char *sql) const
    {
        if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            qCritical("%s", sqlite3_errmsg(database));
            std::abort();
        }
    }
};

BareInsert::BareInsert(const QString &filePath, int count, qsizetype textSize)
    : m_handles(std::make_unique<Handles>())
{
    sqlite3_open(QFile::encodeName(filePath).constData(), &m_handles->database);
    m_handles->execute(
        "PRAGMA auto_vacuum = INCREMENTAL; PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;"
        "CREATE TABLE item (id TEXT, type TEXT, app TEXT, bundle TEXT, pinned INTEGER, created REAL,"
        "characters INTEGER, category TEXT, content TEXT, image BLOB)");
    sqlite3_prepare_v2(m_handles->database,
        "INSERT INTO item VALUES ('8c5a9d1e-6a43-4a53-9ad1-6d6d3a1c2f11', 'text', NULL, NULL, 0, "
        "1772355907.25, "
        "?2, NULL, ?1, NULL)",
        -1, &m_handles->insert, nullptr);
    m_handles->execute("BEGIN");
    for (int i = 0; i < count; ++i)
        insert(History::distinctText(textSize));
    m_handles->execute("COMMIT");
}

BareInsert::~BareInsert()
{
    sqlite3_finalize(m_handles->insert);
    sqlite3_close(m_handles->database);
}

void BareInsert::insertAndCommit(const QByteArray &text)
{
    m_handles->execute("BEGIN IMMEDIATE");
    insert(text);
    m_handles->execute("COMMIT");
}

void BareInsert::insert(const QByteArray &text)
{
    sqlite3_bind_text64(m_handles->insert, 1, text.constData(), static_cast<sqlite3_uint64>(text.size()),
        SQLITE_STATIC, SQLITE_UTF8);
    sqlite3_bind_int64(m_handles->insert, 2, text.size());
    sqlite3_step(m_handles->insert);
    sqlite3_reset(m_handles->insert);
}

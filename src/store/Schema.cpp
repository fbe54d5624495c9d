#include "store/Schema.h"

#include "store/Database.h"

namespace schema
{
namespace
{

/// Large columns come last: SQLite reads a row up to the column asked for, and images would lie in the way.
constexpr auto CreateVersion1 = R"(
CREATE TABLE ClipboardItem (
    id TEXT NOT NULL,
    type TEXT NOT NULL,
    sourceAppName TEXT,
    sourceAppBundleId TEXT,
    isPinned INTEGER NOT NULL,
    createdAt REAL NOT NULL,
    characterCount INTEGER NOT NULL,
    categoryId TEXT,
    content TEXT NOT NULL,
    imageData BLOB
);
CREATE TABLE ClipCategory (
    id TEXT NOT NULL,
    name TEXT NOT NULL,
    colorHex TEXT NOT NULL,
    icon TEXT NOT NULL,
    sortOrder INTEGER NOT NULL,
    isDefault INTEGER NOT NULL,
    createdAt REAL NOT NULL
);
CREATE TABLE PasteTemplate (
    id TEXT NOT NULL,
    name TEXT NOT NULL,
    separator TEXT NOT NULL,
    itemPrefix TEXT NOT NULL,
    itemSuffix TEXT NOT NULL,
    wrapPrefix TEXT NOT NULL,
    wrapSuffix TEXT NOT NULL,
    sortOrder INTEGER NOT NULL,
    isDefault INTEGER NOT NULL
);
PRAGMA application_id = 0x4C524B53;
PRAGMA user_version = 1;
)";

/// Checks that the file is this program's, of a version that it knows, or empty; its version, 0 when empty.
Result<qint64> versionOf(Database &database)
{
    const auto tables = database.integer("SELECT count(*) FROM sqlite_schema");
    if (!tables)
        return tables.error();
    const auto applicationId = database.integer("PRAGMA application_id");
    if (!applicationId)
        return applicationId.error();
    const auto version = database.integer("PRAGMA user_version");
    if (!version)
        return version.error();
    if (tables.value() == 0 && version.value() == 0)
        return 0;
    if (applicationId.value() != ApplicationId)
        return Error{QStringLiteral("the file is another program's database")};
    if (version.value() > Version) {
        return Error{
            QStringLiteral("the file is from a newer version (its schema is %1, this program knows %2)")
                .arg(version.value())
                .arg(Version)};
    }
    return version.value();
}

} // namespace

Result<Success> prepare(Database &database)
{
    const auto version = versionOf(database);
    if (!version) {
        database.leaveFileAlone();
        return version.error();
    }
    // Freed pages are handed back to the file system in steps; it can only be chosen before the first table.
    if (version.value() == 0)
        (void)database.execute("PRAGMA auto_vacuum = INCREMENTAL");
    if (const auto connected = database.execute("PRAGMA journal_mode = WAL;"
                                                "PRAGMA synchronous = FULL;"
                                                "PRAGMA secure_delete = FAST;"
                                                "PRAGMA cache_size = -1024;"
                                                "PRAGMA journal_size_limit = 4194304;");
        !connected)
        return connected.error();
    if (version.value() == 0)
        return database.transaction([&database] { return database.execute(CreateVersion1); });
    return Success();
}

void giveFreePagesBack(Database &database)
{
    // 8 MiB of pages: new entries use fewer up soon by themselves.
    constexpr qint64 Worthwhile = 2048;
    const auto freePages = database.integer("PRAGMA freelist_count");
    const auto allPages = database.integer("PRAGMA page_count");
    if (!freePages || !allPages || freePages.value() < Worthwhile)
        return;
    const bool isMostlyFree = freePages.value() > allPages.value() / 2;
    (void)database.execute(isMostlyFree ? "PRAGMA incremental_vacuum" : "PRAGMA incremental_vacuum(512)");
}

} // namespace schema

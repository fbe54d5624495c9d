#pragma once

#include "store/ModelContext.h"
#include "store/StoreLock.h"

#include <memory>

/// The store of the three record types: one SQLite file, open for the life of the process.
class ModelContainer
{
public:
    /// The largest row that the file can hold, in bytes: SQLite's limit, less what the small fields may take.
    static constexpr qint64 LargestRow = 1'000'000'000 - 1024 * 1024;

    /// The user's own store: `$XDG_DATA_HOME/larkspool/larkspool.sqlite`.
    static QString defaultFilePath();

    /// Opens the file, making it and its folder (mode 0700) when they are missing. A file that cannot be used
    /// is left as it is, and the error says why. One process at a time has it open (`larkspool.lock` beside
    /// it).
    static Result<std::unique_ptr<ModelContainer>> open(const QString &filePath);
    ~ModelContainer();

    ModelContext &mainContext() { return *m_mainContext; }

private:
    ModelContainer(std::unique_ptr<StoreLock> lock, std::unique_ptr<Database> database);

    std::unique_ptr<StoreLock> m_lock;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<ModelContext> m_mainContext;
};

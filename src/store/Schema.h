#pragma once

#include "base/Result.h"

class Database;

/// The store's tables and their version.
namespace schema
{

/// The version that this program writes (SQLite's user_version). A later one that changes a table adds a step
/// to `prepare`, and its predecessors' files are migrated when they are opened.
inline constexpr qint64 Version = 1;

/// What marks a file as this program's (SQLite's application_id): "LRKS".
inline constexpr qint64 ApplicationId = 0x4C524B53;

/// Makes the tables in an empty file, migrates those of an earlier version, and sets the connection up: every
/// commit durable before it returns. Leaves the file as it is, and says why, when it is another program's,
/// from a newer version or not a database.
Result<Success> prepare(Database &database);

/// Gives pages that deletions have freed back to the file system, a part of them at a time, or all when most
/// of the file is free. Cheap when there are few.
void giveFreePagesBack(Database &database);

} // namespace schema

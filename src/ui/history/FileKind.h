#pragma once

#include <QStringList>

#include <chrono>

/// What a file looks like to the desktop. Any thread.
namespace filekind
{

/// The names of a file's icons, the most telling first (freedesktop.org's Icon Naming Specification), by its
/// name alone.
QStringList iconNames(const QString &path);

/// The names of a folder's icons.
QStringList folderIconNames();

/// Whether the path leads to a folder. Asks the file system, which may not answer: a network folder whose
/// server is gone keeps whoever asks for minutes. False, then, after the deadline; and at once while several
/// such questions are unanswered.
bool isFolder(const QString &path, std::chrono::milliseconds deadline);

} // namespace filekind

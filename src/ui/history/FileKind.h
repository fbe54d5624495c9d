#pragma once

#include <QStringList>

#include <chrono>
#include <functional>

/// What a file looks like to the desktop. Any thread.
namespace filekind
{

/// The names of a file's icons, the most telling first (freedesktop.org's Icon Naming Specification), by its
/// name alone.
QStringList iconNames(const QString &path);

/// The names of a folder's icons.
QStringList folderIconNames();

/// The answer to a question that may stay unanswered, asked on another thread: false after the deadline, and
/// at once while several earlier ones are still unanswered.
bool answerTo(std::function<bool()> question, std::chrono::milliseconds deadline);

/// Whether the path leads to a folder. The file system is asked, which may not answer: a network folder whose
/// server is gone keeps whoever asks for minutes.
bool isFolder(const QString &path, std::chrono::milliseconds deadline);

} // namespace filekind

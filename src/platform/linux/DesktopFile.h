#pragma once

#include "platform/linux/DesktopEntries.h"

#include <QByteArrayList>

/// Reads one desktop file: pure functions over its text.
namespace desktopfile
{

/// The keys that may hold the name for a language, best first: for "de_AT.UTF-8@euro" they are
/// Name[de_AT@euro], Name[de_AT], Name[de@euro], Name[de], Name (Desktop Entry Specification, "Localized
/// values for keys").
QByteArrayList nameKeys(const QByteArray &locale);

/// The application that the file's group [Desktop Entry] describes, without its id; nothing when it describes
/// none: it is a link or a folder, has no name, or says Hidden=true, which stands for a deleted file.
std::optional<DesktopEntry> parse(const QByteArray &text, const QByteArrayList &nameKeys);

/// The words of an Exec line, unquoted (Desktop Entry Specification, "The Exec key").
QStringList execWords(const QString &exec);

} // namespace desktopfile

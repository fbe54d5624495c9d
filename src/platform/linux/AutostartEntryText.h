#pragma once

#include "base/Result.h"

#include <QByteArray>

/// The text of this program's autostart entry (Desktop Application Autostart Specification 0.5, Desktop Entry
/// Specification 1.5): pure functions. An existing text is mended: lines that are not ours stay as they are.
/// A text without the group [Desktop Entry] describes nothing, and is replaced.
namespace autostartentry
{

/// The name of its file, which is also what system-wide entries of this program are called.
const QString &fileName();

/// A program and its path as a value of Exec: quoted where that is needed, twice escaped. Fails for a path
/// that Exec cannot hold: one that is not absolute, or has an equals sign or a control character in it.
Result<QByteArray> execValue(const QString &programPath);

/// An entry that starts the program. Fails as `execValue` does.
Result<QByteArray> started(const QByteArray &existing, const QString &programPath);

/// An entry that starts nothing, and shadows those of the same name in folders of less importance.
QByteArray hidden(const QByteArray &existing);

} // namespace autostartentry

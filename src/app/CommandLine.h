#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace commandline
{

/// What the program prints, without a desktop, when it is asked about itself: the help for --help and -h, the
/// version for --version and -v. Absent otherwise. The arguments are the program's own, without its name.
std::optional<QString> answer(const QStringList &arguments);

/// The complaint about the first argument that the program does not know; absent when there is none. The
/// toolkit has taken its own out of the arguments before.
std::optional<QString> complaint(const QStringList &arguments);

} // namespace commandline

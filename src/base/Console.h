#pragma once

#include <QString>

/// Writes one line to standard output and flushes it, so that a reader at the other end of a pipe sees it at
/// once. A failed write (closed pipe, full disk) is dropped: a diagnostic never stops the program.
void consoleLine(const QString &line);

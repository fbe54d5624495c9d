#pragma once

#include <QString>

/// The keys that paste, by program.
enum class PasteChord {
    ControlV,
    ControlShiftV, ///< terminals, where Ctrl+V is input
    ShiftInsert,   ///< programs that know nothing else; most of them paste PRIMARY with it
};

/// The paste chord of a program, known by its desktop id or window class, the last dotted part of that, or
/// its executable's name, in this order and in any letter case; either may be empty. Ctrl+V for all that the
/// table does not name.
PasteChord pasteChord(const QString &identifier, const QString &executable);

/// The name of the executable that a process runs, without its folder; empty when it is not known (another
/// user's process, one that has ended, -1).
QString executableName(qint64 processIdentifier);

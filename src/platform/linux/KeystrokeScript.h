#pragma once

#include <QString>

#include <optional>

/// What a keystroke script asks for: a character's key, pressed while modifiers are held.
struct Keystroke {
    QChar character;
    bool isCommandDown = false;
    bool isShiftDown = false;
    bool isOptionDown = false;
    bool isControlDown = false;

    bool operator==(const Keystroke &other) const = default;
};

/// Reads a script of the form
///
///     tell application "System Events"
///         keystroke "v" using {command down, shift down}
///     end tell
///
/// One character, with a backslash before a quotation mark or a backslash; modifiers command, shift, option
/// and control; the braces may be left out around a single one, and "using" with them where there is none.
/// White space between words is free, as long as each line stays a line. Nothing for any other script.
std::optional<Keystroke> keystrokeFromScript(const QString &source);

#pragma once

#include "platform/HotKeyCenter.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A key combination: a key with modifiers. A plain value.
struct KeyCombo {
    quint32 keyCode = 0;   ///< virtual key code, US layout numbering
    quint32 modifiers = 0; ///< `HotKeyModifier` bits; others are ignored

    /// Command-Shift-V.
    static KeyCombo standard() { return {9, CommandKey | ShiftKey}; }

    /// The stored form: a JSON object, {"keyCode":9,"modifiers":768}.
    QByteArray encoded() const;
    /// Nothing unless both members are there and are unsigned 32-bit integers.
    static std::optional<KeyCombo> decoded(const QByteArray &json);

    /// The symbols of the modifiers, Command first and Control last, and the key's name if it has one, joined
    /// by blanks: "⌘ ⇧ V".
    QString displayString() const;

    /// The name of a key: letters, digits and a few keys with symbols; nothing for others.
    static std::optional<QString> keyCodeToString(quint32 keyCode);

    friend bool operator==(const KeyCombo &, const KeyCombo &) = default;
};

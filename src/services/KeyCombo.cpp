#include "services/KeyCombo.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <array>
#include <cmath>
#include <limits>

namespace
{

struct NamedKey {
    quint32 keyCode;
    const char *name;
};

constexpr std::array NamedKeys{
    NamedKey{0, "A"},
    NamedKey{11, "B"},
    NamedKey{8, "C"},
    NamedKey{2, "D"},
    NamedKey{14, "E"},
    NamedKey{3, "F"},
    NamedKey{5, "G"},
    NamedKey{4, "H"},
    NamedKey{34, "I"},
    NamedKey{38, "J"},
    NamedKey{40, "K"},
    NamedKey{37, "L"},
    NamedKey{46, "M"},
    NamedKey{45, "N"},
    NamedKey{31, "O"},
    NamedKey{35, "P"},
    NamedKey{12, "Q"},
    NamedKey{15, "R"},
    NamedKey{1, "S"},
    NamedKey{17, "T"},
    NamedKey{32, "U"},
    NamedKey{9, "V"},
    NamedKey{13, "W"},
    NamedKey{7, "X"},
    NamedKey{16, "Y"},
    NamedKey{6, "Z"},
    NamedKey{29, "0"},
    NamedKey{18, "1"},
    NamedKey{19, "2"},
    NamedKey{20, "3"},
    NamedKey{21, "4"},
    NamedKey{23, "5"},
    NamedKey{22, "6"},
    NamedKey{26, "7"},
    NamedKey{28, "8"},
    NamedKey{25, "9"},
    NamedKey{49, "Space"},
    NamedKey{36, "↩"},
    NamedKey{48, "⇥"},
    NamedKey{53, "⎋"},
    NamedKey{51, "⌫"},
    NamedKey{117, "⌦"},
    NamedKey{126, "↑"},
    NamedKey{125, "↓"},
    NamedKey{123, "←"},
    NamedKey{124, "→"},
};

struct ModifierSymbol {
    quint32 bit;
    const char *symbol;
};

constexpr std::array ModifierSymbols{
    ModifierSymbol{CommandKey, "⌘"},
    ModifierSymbol{ShiftKey, "⇧"},
    ModifierSymbol{OptionKey, "⌥"},
    ModifierSymbol{ControlKey, "⌃"},
};

std::optional<quint32> unsignedInteger(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (number < 0 || number > std::numeric_limits<quint32>::max() || number != std::floor(number))
        return std::nullopt;
    return static_cast<quint32>(number);
}

} // namespace

QByteArray KeyCombo::encoded() const
{
    const QJsonObject object{{QStringLiteral("keyCode"), static_cast<qint64>(keyCode)},
        {QStringLiteral("modifiers"), static_cast<qint64>(modifiers)}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<KeyCombo> KeyCombo::decoded(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const auto keyCode = unsignedInteger(object.value(QStringLiteral("keyCode")));
    const auto modifiers = unsignedInteger(object.value(QStringLiteral("modifiers")));
    if (!keyCode || !modifiers)
        return std::nullopt;
    return KeyCombo{*keyCode, *modifiers};
}

QString KeyCombo::displayString() const
{
    QStringList parts;
    for (const ModifierSymbol &modifier : ModifierSymbols) {
        if ((modifiers & modifier.bit) != 0)
            parts.append(QString::fromUtf8(modifier.symbol));
    }
    if (const auto name = keyCodeToString(keyCode))
        parts.append(*name);
    return parts.join(QLatin1Char(' '));
}

std::optional<QString> KeyCombo::keyCodeToString(quint32 keyCode)
{
    for (const NamedKey &key : NamedKeys) {
        if (key.keyCode == keyCode)
            return QString::fromUtf8(key.name);
    }
    return std::nullopt;
}

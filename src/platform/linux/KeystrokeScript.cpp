#include "platform/linux/KeystrokeScript.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace
{

/// Sets the flag that the words "command down" name; false for any other words.
bool hold(Keystroke &keystroke, const QString &words)
{
    static const QRegularExpression Words(QStringLiteral("^(command|shift|option|control)[ \\t]+down$"));
    const QString modifier = Words.match(words.trimmed()).captured(1);
    if (modifier == QLatin1String("command"))
        keystroke.isCommandDown = true;
    else if (modifier == QLatin1String("shift"))
        keystroke.isShiftDown = true;
    else if (modifier == QLatin1String("option"))
        keystroke.isOptionDown = true;
    else if (modifier == QLatin1String("control"))
        keystroke.isControlDown = true;
    return !modifier.isEmpty();
}

bool holdAll(Keystroke &keystroke, const QString &list)
{
    if (list.isEmpty())
        return true;
    if (!list.startsWith(QLatin1Char('{')))
        return hold(keystroke, list);
    if (!list.endsWith(QLatin1Char('}')))
        return false;
    const QStringList modifiers = list.mid(1, list.size() - 2).split(QLatin1Char(','));
    return std::ranges::all_of(
        modifiers, [&keystroke](const QString &words) { return hold(keystroke, words); });
}

} // namespace

std::optional<Keystroke> keystrokeFromScript(const QString &source)
{
    static const QRegularExpression Tell(QStringLiteral("^tell[ \\t]+application[ \\t]+\"System Events\"$"));
    static const QRegularExpression Press(QStringLiteral(
        "^keystroke[ \\t]+\"(?:\\\\([\"\\\\])|([^\"\\\\]))\"(?:[ \\t]+using[ \\t]+(\\S.*))?$"));
    static const QRegularExpression End(QStringLiteral("^end[ \\t]+tell$"));
    const QStringList lines = source.trimmed().split(QLatin1Char('\n'));
    if (lines.size() != 3 || !Tell.match(lines[0].trimmed()).hasMatch() ||
        !End.match(lines[2].trimmed()).hasMatch())
        return std::nullopt;
    const QRegularExpressionMatch press = Press.match(lines[1].trimmed());
    const QString character = press.captured(1) + press.captured(2);
    Keystroke keystroke;
    if (character.size() != 1 || !holdAll(keystroke, press.captured(3)))
        return std::nullopt;
    keystroke.character = character.front();
    return keystroke;
}

#include "platform/linux/AutostartEntryText.h"

#include <QByteArrayList>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace autostartentry
{
namespace
{

struct Line {
    QByteArray key;
    QByteArray value;
};
using Lines = std::vector<Line>;

const QByteArray GroupHeader("[Desktop Entry]");
const QByteArray Type("Type");
const QByteArray Application("Application");
const QByteArray Name("Name");
const QByteArray NameValue("Larkspool");
const QByteArray Exec("Exec");
const QByteArray Hidden("Hidden");
const QByteArray True("true");
const QByteArray False("false");

/// Every desktop has a switch of this kind with its own name in front.
constexpr char SwitchSuffix[] = "-Autostart-enabled";

/// The key of a line of the group; empty for comments, blank lines and whatever else is no entry.
QByteArray keyOf(const QByteArray &line)
{
    const qsizetype sign = line.indexOf('=');
    return sign < 0 || line.startsWith('#') ? QByteArray() : line.left(sign).trimmed();
}

/// The place of the group among the lines: its header, and the line after its last one.
std::pair<qsizetype, qsizetype> groupIn(const QByteArrayList &lines)
{
    const auto isHeader = [](const QByteArray &line) { return line.trimmed().startsWith('['); };
    const auto begin =
        std::ranges::find_if(lines, [](const QByteArray &line) { return line.trimmed() == GroupHeader; });
    const auto end = begin == lines.end() ? begin : std::find_if(begin + 1, lines.end(), isHeader);
    return {begin - lines.begin(), end - lines.begin()};
}

QByteArray textOf(const Lines &lines)
{
    QByteArray text = GroupHeader + '\n';
    for (const Line &line : lines)
        text += line.key + '=' + line.value + '\n';
    return text;
}

/// The lines `wanted` take the places of the first ones with their keys, or come at the end of the group.
/// Other lines with keys of ours go.
template<class IsOurs>
QByteArray merged(const QByteArray &existing, const Lines &wanted, IsOurs isOurs)
{
    const QByteArrayList lines = existing.split('\n');
    const auto [begin, end] = groupIn(lines);
    if (begin == lines.size())
        return textOf(wanted);
    QByteArrayList kept = lines.first(begin + 1);
    Lines missing = wanted;
    for (const QByteArray &line : lines.sliced(begin + 1, end - begin - 1)) {
        const QByteArray key = keyOf(line);
        const auto found = std::ranges::find(missing, key, &Line::key);
        if (found != missing.end()) {
            kept.append(key + '=' + found->value);
            missing.erase(found);
        } else if (!isOurs(key) && std::ranges::find(wanted, key, &Line::key) == wanted.end()) {
            kept.append(line);
        }
    }
    // Blank lines before the next group, or the end of the file, stay at the end.
    qsizetype last = kept.size();
    while (kept[last - 1].trimmed().isEmpty())
        --last;
    for (const Line &line : missing)
        kept.insert(last++, line.key + '=' + line.value);
    QByteArray text = (kept + lines.sliced(end)).join('\n');
    return text.endsWith('\n') ? text : text + '\n';
}

/// As a value of the type string.
QByteArray escaped(QByteArray value)
{
    return value.replace('\\', "\\\\");
}

} // namespace

const QString &fileName()
{
    static const QString FileName = QStringLiteral("org.larkspool.Larkspool.desktop");
    return FileName;
}

Result<QByteArray> execValue(const QString &programPath)
{
    const bool isHoldable = programPath.startsWith(QLatin1Char('/')) && programPath.isValidUtf16() &&
        std::ranges::none_of(programPath, [](QChar character) {
            return character == QLatin1Char('=') || character == QChar::ReplacementCharacter ||
                character.category() == QChar::Other_Control;
        });
    if (!isHoldable)
        return Error{QStringLiteral("an autostart entry cannot hold the program's path %1")
                         .arg(programPath.simplified())};
    QByteArray word = programPath.toUtf8().replace('%', "%%");
    constexpr std::string_view Reserved(" \"'\\><~|&;$*?#()`");
    if (std::ranges::none_of(word, [&](char c) { return Reserved.find(c) != Reserved.npos; }))
        return word;
    QByteArray quoted("\"");
    for (const char character : std::as_const(word)) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            quoted += '\\';
        quoted += character;
    }
    return escaped(quoted + '"');
}

Result<QByteArray> started(const QByteArray &existing, const QString &programPath)
{
    const auto exec = execValue(programPath);
    if (!exec)
        return exec.error();
    const Lines wanted{{Type, Application}, {"Version", "1.4"}, {Name, NameValue},
        {"Comment", "Remembers what you copy"}, {"Comment[de]", "Merkt sich, was kopiert wird"},
        {Exec, exec.value()},
        // A desktop passes over an entry whose program has been removed.
        {"TryExec", escaped(programPath.toUtf8())}, {"Icon", "org.larkspool.Larkspool"}, {"Terminal", False},
        {"StartupNotify", False},
        // The desktop's own list of what it starts shows it.
        {"NoDisplay", False}, {"X-GNOME-Autostart-enabled", True}};
    return merged(
        existing, wanted, [](const QByteArray &key) { return key == Hidden || key.endsWith(SwitchSuffix); });
}

QByteArray hidden(const QByteArray &existing)
{
    const auto [begin, end] = groupIn(existing.split('\n'));
    if (begin == end)
        return textOf({{Type, Application}, {Name, NameValue}, {Exec, "larkspool"}, {Hidden, True}});
    return merged(existing, {{Hidden, True}}, [](const QByteArray &key) { return key == Hidden; });
}

} // namespace autostartentry

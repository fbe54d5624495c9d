#include "platform/linux/DesktopFile.h"

namespace desktopfile
{
namespace
{

/// A value with its escapes \s \n \t \r \\ resolved.
QString unescaped(QByteArrayView value)
{
    QByteArray plain;
    plain.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            plain += value[i];
            continue;
        }
        switch (value[++i]) {
        case 's':
            plain += ' ';
            break;
        case 'n':
            plain += '\n';
            break;
        case 't':
            plain += '\t';
            break;
        case 'r':
            plain += '\r';
            break;
        case '\\':
            plain += '\\';
            break;
        default: // not an escape of this format: Exec has its own
            plain += '\\';
            plain += value[i];
        }
    }
    return QString::fromUtf8(plain);
}

/// Takes the program and the number of fixed arguments from an Exec line.
void readExec(const QString &exec, DesktopEntry &entry)
{
    QStringList words = execWords(exec);
    // "env NAME=value program" starts the program.
    if (!words.isEmpty() && words.first().section(QLatin1Char('/'), -1) == QLatin1String("env")) {
        words.removeFirst();
        while (!words.isEmpty() && words.first().contains(QLatin1Char('=')))
            words.removeFirst();
    }
    if (words.isEmpty())
        return;
    entry.executable = words.takeFirst().section(QLatin1Char('/'), -1);
    for (const QString &word : words)
        entry.argumentCount += !(word.size() == 2 && word.startsWith(QLatin1Char('%')));
}

/// What is collected on the way through the file.
struct Draft {
    DesktopEntry entry;
    qsizetype nameRank;
    bool isApplication = false;
    bool isHidden = false;
};

void readLine(QByteArrayView key, QByteArrayView value, const QByteArrayList &nameKeys, Draft &draft)
{
    DesktopEntry &entry = draft.entry;
    if (key.startsWith("Name")) {
        for (qsizetype rank = 0; rank < draft.nameRank; ++rank) {
            if (key == nameKeys[rank]) {
                entry.name = unescaped(value);
                draft.nameRank = rank;
            }
        }
    } else if (key == "Type") {
        draft.isApplication = value == "Application";
    } else if (key == "Hidden") {
        draft.isHidden = value == "true";
    } else if (key == "NoDisplay" || key == "Terminal") {
        entry.isShown = entry.isShown && value != "true";
    } else if (key == "StartupWMClass") {
        entry.startupWmClass = unescaped(value);
    } else if (key == "Icon") {
        entry.icon = unescaped(value);
    } else if (key == "Exec") {
        readExec(unescaped(value), entry);
    }
}

} // namespace

QByteArrayList nameKeys(const QByteArray &locale)
{
    const qsizetype at = locale.indexOf('@');
    const QByteArray modifier = at < 0 ? QByteArray() : locale.mid(at);
    QByteArray territory = at < 0 ? locale : locale.left(at);
    if (const qsizetype dot = territory.indexOf('.'); dot >= 0)
        territory.truncate(dot);
    const qsizetype underscore = territory.indexOf('_');
    const QByteArray language = underscore < 0 ? territory : territory.left(underscore);

    QByteArrayList keys;
    if (!language.isEmpty() && language != "C" && language != "POSIX") {
        for (const QByteArray &place : {territory, language}) {
            for (const QByteArray &variant : {place + modifier, place}) {
                const QByteArray key = "Name[" + variant + ']';
                if (!keys.contains(key))
                    keys.append(key);
            }
        }
    }
    keys.append("Name");
    return keys;
}

std::optional<DesktopEntry> parse(const QByteArray &text, const QByteArrayList &nameKeys)
{
    Draft draft{.entry = {}, .nameRank = nameKeys.size()};
    bool isInGroup = false;
    qsizetype end = 0;
    for (qsizetype begin = 0; begin < text.size(); begin = end + 1) {
        end = text.indexOf('\n', begin);
        if (end < 0)
            end = text.size();
        const QByteArrayView line = QByteArrayView(text).sliced(begin, end - begin).trimmed();
        if (line.startsWith('[')) {
            if (isInGroup)
                break;
            isInGroup = line == "[Desktop Entry]";
        } else if (isInGroup && !line.startsWith('#')) {
            if (const qsizetype equals = line.indexOf('='); equals > 0)
                readLine(line.first(equals).trimmed(), line.sliced(equals + 1).trimmed(), nameKeys, draft);
        }
    }
    if (!draft.isApplication || draft.isHidden || draft.entry.name.isEmpty())
        return std::nullopt;
    return draft.entry;
}

QStringList execWords(const QString &exec)
{
    QStringList words;
    QString word;
    bool isQuoted = false;
    bool isInWord = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar character = exec[i];
        if (character == QLatin1Char('"')) {
            isQuoted = !isQuoted;
            isInWord = true;
        } else if (character == QLatin1Char('\\') && isQuoted && i + 1 < exec.size()) {
            word += exec[++i];
        } else if (character.isSpace() && !isQuoted) {
            if (isInWord)
                words.append(std::exchange(word, {}));
            isInWord = false;
        } else {
            word += character;
            isInWord = true;
        }
    }
    if (isInWord)
        words.append(word);
    return words;
}

} // namespace desktopfile

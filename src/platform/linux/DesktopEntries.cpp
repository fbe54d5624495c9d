#include "platform/linux/DesktopEntries.h"

#include "platform/linux/DesktopFile.h"
#include "platform/linux/PasteChords.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string_view>

namespace
{

// A desktop file has a few kilobytes; whatever is larger is none.
constexpr qint64 FileSizeLimit = 1024 * 1024;

const QLatin1String Suffix(".desktop");

QString absoluteOrEmpty(const QByteArray &folder)
{
    return folder.startsWith('/') ? QFile::decodeName(folder) : QString();
}

QString lastPart(const QString &id)
{
    return id.mid(id.lastIndexOf(QLatin1Char('.')) + 1);
}

bool isSameName(const QString &one, const QString &other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

/// Follows the file's place below `root`: "kde/konsole.desktop" is "kde-konsole".
QString desktopId(const QString &root, const QString &path)
{
    QString id = path.mid(root.size() + 1);
    id.chop(Suffix.size());
    return id.replace(QLatin1Char('/'), QLatin1Char('-'));
}

/// By its two or three letters (ISO 639), which may be followed by a script, a country, an encoding and more.
bool namesLanguage(const QByteArray &locale)
{
    const auto *const end = std::ranges::find_if_not(
        locale, [](char letter) { return QChar::isLetter(static_cast<uchar>(letter)); });
    const auto length = std::distance(locale.begin(), end);
    return (length == 2 || length == 3) && (end == locale.end() || QByteArrayView("-_.@").contains(*end));
}

/// "fr_CA" of "fr-CA", which is read as well.
QByteArray posixName(QByteArray locale)
{
    constexpr std::string_view EndsOfCountry = ".@";
    std::replace(locale.begin(), std::ranges::find_first_of(locale, EndsOfCountry), '-', '_');
    return locale;
}

QByteArray localeOfVariables()
{
    for (const char *const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const QByteArray value = qgetenv(variable); !value.isEmpty())
            return value;
    }
    return "C";
}

/// Where a Flatpak has the desktop's folders of data; nothing is there unless it was allowed to read them.
QStringList desktopsFolders(const QString &userFolder)
{
    const QString flatpaks = QStringLiteral("/flatpak/exports/share");
    const QString hostUserFolder = absoluteOrEmpty(qgetenv("HOST_XDG_DATA_HOME"));
    const QString user = hostUserFolder.isEmpty() ? userFolder : hostUserFolder;
    return {user, user + flatpaks, QStringLiteral("/var/lib") + flatpaks,
        QStringLiteral("/run/host/usr/local/share"), QStringLiteral("/run/host/usr/share")};
}

} // namespace

DesktopEntries::DesktopEntries(QStringList folders, const QByteArray &locale, Surroundings surroundings)
    : m_roots(std::move(folders))
    , m_nameKeys(desktopfile::nameKeys(locale))
    , m_surroundings(surroundings)
{
}

DesktopEntries::Surroundings DesktopEntries::surroundings(const QString &flatpakDescription)
{
    return QFileInfo::exists(flatpakDescription) ? Surroundings::Flatpak : Surroundings::Desktop;
}

QStringList DesktopEntries::defaultFolders(Surroundings surroundings)
{
    const QString usualHome = QFile::decodeName(qgetenv("HOME")) + QStringLiteral("/.local/share");
    const QString home = absoluteOrEmpty(qgetenv("XDG_DATA_HOME"));
    QByteArray others = qgetenv("XDG_DATA_DIRS");
    if (others.isEmpty())
        others = "/usr/local/share/:/usr/share/";

    QStringList folders{home.isEmpty() ? usualHome : home};
    for (const QByteArray &other : others.split(':'))
        folders.append(absoluteOrEmpty(other));
    if (surroundings == Surroundings::Flatpak)
        folders += desktopsFolders(usualHome);
    folders.removeAll(QString());
    for (QString &folder : folders) {
        while (folder.endsWith(QLatin1Char('/')))
            folder.chop(1);
        folder += QStringLiteral("/applications");
    }
    folders.removeDuplicates();
    return folders;
}

QByteArray DesktopEntries::messagesLocale()
{
    // Without the variable there is one entry, an empty one.
    for (const QByteArray &entry : qgetenv("LANGUAGE").split(':')) {
        if (entry.isEmpty())
            return localeOfVariables();
        if (namesLanguage(entry))
            return posixName(entry);
    }
    return "C";
}

bool DesktopEntries::isCurrent() const
{
    return m_isRead && std::ranges::all_of(m_folders, [](const Folder &folder) {
        return QFileInfo(folder.path).lastModified() == folder.modified;
    });
}

void DesktopEntries::refresh()
{
    if (isCurrent())
        return;
    m_isRead = true;
    m_folders.clear();
    m_entries.clear();
    m_indexById.clear();
    QSet<QString> seenIds;
    for (const QString &root : m_roots)
        readTree(root, seenIds);
    for (qsizetype i = 0; i < static_cast<qsizetype>(m_entries.size()); ++i)
        m_indexById.insert(m_entries[static_cast<size_t>(i)].id, i);
}

void DesktopEntries::readTree(const QString &root, QSet<QString> &seenIds)
{
    // The times are taken before the files are read: a change in between is seen as one afterwards.
    m_folders.push_back({root, QFileInfo(root).lastModified()});
    QStringList paths;
    QDirIterator at(root, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (at.hasNext()) {
        const QString path = at.next();
        if (path.endsWith(Suffix))
            paths.append(path);
        else if (at.fileInfo().isDir())
            m_folders.push_back({path, at.fileInfo().lastModified()});
    }
    paths.sort();
    for (const QString &path : std::as_const(paths)) {
        const QString id = desktopId(root, path);
        // A file shadows those of the same id in later folders even when it describes nothing.
        if (seenIds.contains(id))
            continue;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        seenIds.insert(id);
        if (auto entry = desktopfile::parse(file.read(FileSizeLimit), m_nameKeys)) {
            entry->id = id;
            m_entries.push_back(std::move(*entry));
        }
    }
}

std::optional<DesktopEntry> DesktopEntries::entry(const QString &id)
{
    refresh();
    const auto found = m_indexById.constFind(id);
    return found == m_indexById.constEnd() ? std::nullopt
                                           : std::optional(m_entries[static_cast<size_t>(*found)]);
}

std::optional<DesktopEntry> DesktopEntries::entryOf(const WindowIdentity &window)
{
    for (const QString &named : {window.applicationId, window.desktopFile}) {
        QString id = named.section(QLatin1Char('/'), -1);
        if (id.endsWith(Suffix))
            id.chop(Suffix.size());
        if (id.isEmpty())
            continue;
        if (auto found = entry(id))
            return found;
    }
    refresh();
    const DesktopEntry *const found = byNameOfWindow(window);
    return found ? std::optional(*found) : std::nullopt;
}

const DesktopEntry *DesktopEntries::byNameOfWindow(const WindowIdentity &window) const
{
    // The class first: the instance is the program's file name as it was called, or what -name said.
    const std::array names = {window.className, window.instance, window.applicationId};
    for (const QString &name : names) {
        if (const DesktopEntry *const found = byStartupWmClass(name))
            return found;
    }
    for (const QString &name : names) {
        if (const DesktopEntry *const found = byId(name))
            return found;
    }
    // Another sandbox's number may be that of a process here, this program's own not least.
    return m_surroundings == Surroundings::Flatpak ? nullptr
                                                   : byExecutable(executableName(window.processIdentifier));
}

const DesktopEntry *DesktopEntries::byStartupWmClass(const QString &name) const
{
    if (name.isEmpty())
        return nullptr;
    const DesktopEntry *best = nullptr;
    for (const DesktopEntry &entry : m_entries) {
        if (!isSameName(entry.startupWmClass, name))
            continue;
        // Several programs of one suite may name the same class; the one that menus show is the program
        // itself.
        if (!best || (entry.isShown && !best->isShown))
            best = &entry;
    }
    return best;
}

const DesktopEntry *DesktopEntries::byId(const QString &name) const
{
    if (name.isEmpty())
        return nullptr;
    const DesktopEntry *byPart = nullptr;
    for (const DesktopEntry &entry : m_entries) {
        if (isSameName(entry.id, name))
            return &entry;
        if (!byPart && isSameName(lastPart(entry.id), name))
            byPart = &entry;
    }
    return byPart;
}

const DesktopEntry *DesktopEntries::byExecutable(const QString &name) const
{
    if (name.isEmpty())
        return nullptr;
    const DesktopEntry *best = nullptr;
    for (const DesktopEntry &entry : m_entries) {
        // Entries without windows of their own include interpreters, which run other people's programs.
        if (!entry.isShown || entry.executable != name)
            continue;
        if (!best || entry.argumentCount < best->argumentCount)
            best = &entry;
    }
    return best;
}

#include "platform/linux/AutostartEntry.h"

#include "base/FileReader.h"
#include "platform/linux/AutostartEntryText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace
{

/// A desktop file has a few kilobytes; whatever is larger is none.
constexpr qint64 FileSizeLimit = 1024 * 1024;
/// XDG Base Directory Specification, "Referencing this specification".
constexpr auto OnlyTheOwner = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

QString autostartIn(const QString &folder)
{
    return folder.startsWith(QLatin1Char('/')) ? QDir::cleanPath(folder) + QStringLiteral("/autostart")
                                               : QString();
}

QString inFolder(const QString &folder)
{
    return folder + QLatin1Char('/') + autostartentry::fileName();
}

/// The folder with those above it.
bool makeFolder(const QString &path)
{
    return QFileInfo(path).isDir() ||
        (makeFolder(QFileInfo(path).path()) && QDir().mkdir(path, OnlyTheOwner));
}

} // namespace

AutostartEntry::Places AutostartEntry::defaultPlaces()
{
    Places places;
    places.userFolder = autostartIn(qEnvironmentVariable("XDG_CONFIG_HOME"));
    if (const QString home = qEnvironmentVariable("HOME"); places.userFolder.isEmpty() && !home.isEmpty())
        places.userFolder = autostartIn(home + QStringLiteral("/.config"));
    QString folders = qEnvironmentVariable("XDG_CONFIG_DIRS");
    if (folders.isEmpty())
        folders = QStringLiteral("/etc/xdg");
    for (const QString &folder : folders.split(QLatin1Char(':')))
        places.systemFolders.append(autostartIn(folder));
    places.systemFolders.removeAll(QString());
    return places;
}

AutostartEntry::AutostartEntry(Places places, QString programPath)
    : m_places(std::move(places))
    , m_path(inFolder(m_places.userFolder))
    , m_programPath(std::move(programPath))
{
}

void AutostartEntry::registerItem(Done onDone)
{
    onDone(writeStarted());
}

void AutostartEntry::unregisterItem(Done onDone)
{
    onDone(hideOrRemove());
}

Result<Success> AutostartEntry::writeStarted() const
{
    if (!QFileInfo(m_programPath).isExecutable())
        return Error{QStringLiteral("the program is no longer at %1").arg(m_programPath)};
    const auto old = existing();
    if (!old)
        return old.error();
    const auto text = autostartentry::started(old.value(), m_programPath);
    return text ? write(text.value()) : text.error();
}

Result<Success> AutostartEntry::hideOrRemove() const
{
    if (!hasSystemEntry())
        return remove();
    const auto old = existing();
    return old ? write(autostartentry::hidden(old.value())) : old.error();
}

/// The text of the user's entry, empty when there is none; an error when its place is not for us to write.
Result<QByteArray> AutostartEntry::existing() const
{
    if (m_places.userFolder.isEmpty())
        return Error{QStringLiteral("there is no home folder")};
    const QFileInfo folder(m_places.userFolder);
    const QFileInfo file(m_path);
    for (const QFileInfo &place : {folder, file}) {
        if (place.isSymLink())
            return Error{QStringLiteral("%1 is a link").arg(place.filePath())};
    }
    if (folder.exists() && !folder.isDir())
        return Error{QStringLiteral("%1 is not a folder").arg(folder.filePath())};
    if (!file.exists())
        return QByteArray();
    if (!file.isFile())
        return Error{QStringLiteral("%1 is not a file").arg(m_path)};
    if (auto text = readRegularFile(QFile::encodeName(m_path), FileSizeLimit))
        return *std::move(text);
    return Error{QStringLiteral("%1 cannot be read").arg(m_path)};
}

Result<Success> AutostartEntry::write(const QByteArray &text) const
{
    if (!makeFolder(m_places.userFolder))
        return Error{QStringLiteral("the folder %1 cannot be made").arg(m_places.userFolder)};
    QSaveFile file(m_path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return Success();
    return Error{QStringLiteral("%1 cannot be written").arg(m_path)};
}

Result<Success> AutostartEntry::remove() const
{
    const QFileInfo file(m_path);
    if (m_places.userFolder.isEmpty() || (!file.exists() && !file.isSymLink()))
        return Success();
    // One that may not be read may be removed, but nothing else than a file of the user's own.
    const bool isOurs = file.isFile() && !file.isSymLink() && !QFileInfo(m_places.userFolder).isSymLink();
    if (!isOurs) {
        const auto reason = existing();
        return reason ? Error{QStringLiteral("%1 is not a file").arg(m_path)} : reason.error();
    }
    if (QFile::remove(m_path))
        return Success();
    return Error{QStringLiteral("%1 cannot be removed").arg(m_path)};
}

bool AutostartEntry::hasSystemEntry() const
{
    return std::ranges::any_of(
        m_places.systemFolders, [](const QString &folder) { return QFileInfo(inFolder(folder)).isFile(); });
}

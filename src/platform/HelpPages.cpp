#include "platform/HelpPages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace
{

/// They lead to each other, and so are of use together only.
constexpr std::array FileNames{QLatin1String("index.html"), QLatin1String("privacy.html")};

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool hasAllPages(const QDir &folder)
{
    return std::ranges::all_of(
        FileNames, [&folder](QLatin1String name) { return QFileInfo(folder.filePath(name)).isFile(); });
}

/// Leaves one that is there already as it is: a browser may be reading it.
bool writePage(const QDir &folder, QLatin1String name)
{
    const QByteArray page = bytesOf(QStringLiteral(":/larkspool/help/") + name);
    const QString path = folder.filePath(name);
    if (page.isEmpty() || bytesOf(path) == page)
        return !page.isEmpty();
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(page) == page.size() && file.commit();
}

bool writeAllPages(const QDir &folder)
{
    return folder.mkpath(QStringLiteral(".")) &&
        std::ranges::all_of(FileNames, [&folder](QLatin1String name) { return writePage(folder, name); });
}

} // namespace

HelpPlaces HelpPlaces::standard(const QString &flatpakDescription)
{
    const QString beside =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/larkspool/help"));
    return {QFileInfo::exists(flatpakDescription) ? QString() : beside,
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
            QStringLiteral("/larkspool/help")};
}

QUrl helpPage(HelpPage page, const HelpPlaces &places)
{
    const QString name = FileNames.at(static_cast<size_t>(page));
    if (const QDir installed(places.installed); !places.installed.isEmpty() && hasAllPages(installed))
        return QUrl::fromLocalFile(installed.filePath(name));
    const QDir cache(places.cache);
    return writeAllPages(cache) ? QUrl::fromLocalFile(cache.filePath(name)) : QUrl();
}

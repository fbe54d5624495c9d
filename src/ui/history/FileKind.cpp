#include "ui/history/FileKind.h"

#include <QFile>
#include <QMimeDatabase>

#include <atomic>
#include <future>
#include <thread>

#include <sys/stat.h>

namespace filekind
{
namespace
{

/// Threads that wait for a file system that does not answer.
constexpr int MostUnanswered = 4;
std::atomic_int unanswered = 0;

bool isFolderOnDisk(const QByteArray &path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

QStringList iconNames(const QString &path)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    QStringList names{type.iconName(), type.genericIconName(), QStringLiteral("text-x-generic")};
    names.removeAll(QString());
    names.removeDuplicates();
    return names;
}

QStringList folderIconNames()
{
    return {QStringLiteral("folder"), QStringLiteral("inode-directory")};
}

bool isFolder(const QString &path, std::chrono::milliseconds deadline)
{
    if (unanswered >= MostUnanswered)
        return false;
    ++unanswered;
    // The thread may outlive the question.
    const auto answer = std::make_shared<std::promise<bool>>();
    auto future = answer->get_future();
    std::thread([answer, path = QFile::encodeName(path)] {
        answer->set_value(isFolderOnDisk(path));
        --unanswered;
    }).detach();
    return future.wait_for(deadline) == std::future_status::ready && future.get();
}

} // namespace filekind

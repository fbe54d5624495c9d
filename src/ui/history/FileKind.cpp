#include "ui/history/FileKind.h"

#include <QFile>
#include <QMimeDatabase>

#include <atomic>
#include <future>
#include <thread>
#include <utility>

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

bool answerTo(std::function<bool()> question, std::chrono::milliseconds deadline)
{
    if (unanswered >= MostUnanswered)
        return false;
    ++unanswered;
    // The thread may outlive the call.
    const auto answer = std::make_shared<std::promise<bool>>();
    auto future = answer->get_future();
    std::thread([answer, question = std::move(question)] {
        answer->set_value(question());
        --unanswered;
    }).detach();
    return future.wait_for(deadline) == std::future_status::ready && future.get();
}

bool isFolder(const QString &path, std::chrono::milliseconds deadline)
{
    return answerTo([path = QFile::encodeName(path)] { return isFolderOnDisk(path); }, deadline);
}

} // namespace filekind

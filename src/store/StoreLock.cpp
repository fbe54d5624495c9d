#include "store/StoreLock.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Whether the path still names the file that is open: its last holder may have removed it meanwhile.
bool isStillNamed(int descriptor, const QByteArray &path)
{
    struct stat opened = {};
    struct stat named = {};
    return fstat(descriptor, &opened) == 0 && stat(path.constData(), &named) == 0 &&
        opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

} // namespace

Result<std::unique_ptr<StoreLock>> StoreLock::acquire(const QString &filePath)
{
    const QByteArray path = QFile::encodeName(filePath);
    for (;;) {
        const int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (descriptor < 0)
            return Error{qt_error_string(errno)};
        if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            const int reason = errno;
            ::close(descriptor);
            return Error{reason == EWOULDBLOCK ? QStringLiteral("another Larkspool has it open")
                                               : qt_error_string(reason)};
        }
        if (isStillNamed(descriptor, path))
            return std::unique_ptr<StoreLock>(new StoreLock(descriptor, path));
        ::close(descriptor);
    }
}

StoreLock::~StoreLock()
{
    unlink(m_path.constData());
    ::close(m_descriptor);
}

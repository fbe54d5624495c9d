#include "store/StoreLock.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

Result<std::unique_ptr<StoreLock>> StoreLock::acquire(const QString &filePath)
{
    const int descriptor =
        ::open(QFile::encodeName(filePath).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0)
        return Error{qt_error_string(errno)};
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        ::close(descriptor);
        return Error{reason == EWOULDBLOCK ? QStringLiteral("another Larkspool has it open")
                                           : qt_error_string(reason)};
    }
    return std::unique_ptr<StoreLock>(new StoreLock(descriptor));
}

StoreLock::~StoreLock()
{
    ::close(m_descriptor);
}

#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <memory>

/// The right to use a store, held by one process at a time. It ends with the object, which removes the file,
/// or with the process, however that ends.
class StoreLock
{
public:
    /// Locks the file, which is made when it is missing; an error when another process, or this one, holds
    /// it.
    static Result<std::unique_ptr<StoreLock>> acquire(const QString &filePath);
    ~StoreLock();
    StoreLock(const StoreLock &) = delete;
    StoreLock &operator=(const StoreLock &) = delete;

private:
    StoreLock(int descriptor, QByteArray path)
        : m_descriptor(descriptor)
        , m_path(std::move(path))
    {
    }

    int m_descriptor;
    QByteArray m_path;
};

#pragma once

#include <unistd.h>

#include <utility>

/// A file descriptor that is closed with its owner; -1 is none.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        if (isOpen())
            ::close(m_descriptor);
    }

    bool isOpen() const { return m_descriptor >= 0; }
    int number() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

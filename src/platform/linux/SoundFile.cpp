#include "platform/linux/SoundFile.h"

#include <QFile>

#include <sys/mman.h>
#include <unistd.h>

SoundFile::SoundFile(const QString &resource)
    : m_descriptor(::memfd_create("larkspool-sound", MFD_CLOEXEC))
    , m_path("/proc/self/fd/" + QByteArray::number(m_descriptor))
{
    QFile sound(resource);
    QFile file;
    if (sound.open(QIODevice::ReadOnly) && file.open(m_descriptor, QIODevice::WriteOnly))
        file.write(sound.readAll());
}

SoundFile::~SoundFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

#pragma once

#include <QByteArray>
#include <QString>

/// A sound of the program's own resources as a file that has a name, for libraries that read nothing else. It
/// lives in memory, and goes with this object.
class SoundFile
{
public:
    /// Of a resource, as ":/larkspool/sounds/...".
    explicit SoundFile(const QString &resource);
    ~SoundFile();
    SoundFile(const SoundFile &) = delete;
    SoundFile &operator=(const SoundFile &) = delete;

    /// Its path, for this process only; names nothing when the file could not be made.
    const QByteArray &path() const { return m_path; }

private:
    const int m_descriptor;
    QByteArray m_path;
};

#include "platform/linux/RestoreToken.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace
{

/// More than any portal hands out; something else than a token is not read to its end.
constexpr qint64 LongestToken = 4096;
constexpr auto OnlyTheOwner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

} // namespace

RestoreToken::RestoreToken(QString filePath)
    : m_filePath(std::move(filePath))
{
}

QString RestoreToken::defaultFilePath()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    return folder + QStringLiteral("/larkspool/remote-desktop-token");
}

QString RestoreToken::read() const
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(LongestToken)).trimmed();
}

void RestoreToken::write(const QString &token) const
{
    if (token.isEmpty()) {
        QFile::remove(m_filePath);
        return;
    }
    const QString folder = QFileInfo(m_filePath).path();
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, OnlyTheOwner | QFileDevice::ExeOwner);
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(OnlyTheOwner);
    file.write(token.toUtf8());
    file.commit();
}

#include "base/UserDefaults.h"

#include "base/Console.h"
#include "base/Result.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSaveFile>
#include <QStandardPaths>

#include <chrono>

namespace
{

/// A file that is emptied and written again is not read in between.
constexpr std::chrono::milliseconds SettlingTime{100};

constexpr auto OwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// What the file holds; nothing at all when there is none.
Result<QByteArray> contents(const QString &filePath)
{
    QFile file(filePath);
    if (!file.exists())
        return QByteArray();
    if (!file.open(QIODevice::ReadOnly))
        return Error{file.errorString()};
    QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return Error{file.errorString()};
    return text;
}

void makeFolder(const QString &filePath)
{
    const QFileInfo folder(QFileInfo(filePath).path());
    QDir().mkpath(folder.path());
    if (!folder.exists())
        QDir().mkdir(folder.filePath(), OwnerOnly | QFileDevice::ExeOwner);
}

/// Replaces the file as a whole; a link stays one.
std::optional<Error> replace(const QString &filePath, const QByteArray &text)
{
    makeFolder(filePath);
    const bool isNew = !QFile::exists(filePath);
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly))
        return Error{file.errorString()};
    if (isNew)
        file.setPermissions(OwnerOnly);
    file.write(text);
    if (!file.commit())
        return Error{file.errorString()};
    return std::nullopt;
}

} // namespace

UserDefaults::UserDefaults(QString filePath)
    : m_filePath(std::move(filePath))
{
    if (auto written = contents(m_filePath))
        m_document = IniDocument(std::move(written).value());
}

UserDefaults::~UserDefaults() = default;

QString UserDefaults::defaultFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/larkspool/larkspool.conf");
}

std::optional<QByteArray> UserDefaults::data(const QString &key) const
{
    const auto stored = text(key);
    return stored ? std::optional(stored->toUtf8()) : std::nullopt;
}

QString UserDefaults::string(const QString &key, const QString &defaultValue) const
{
    return text(key).value_or(defaultValue);
}

bool UserDefaults::boolean(const QString &key, bool defaultValue) const
{
    const auto stored = text(key);
    if (stored == QLatin1String("true") || stored == QLatin1String("1"))
        return true;
    if (stored == QLatin1String("false") || stored == QLatin1String("0"))
        return false;
    return defaultValue;
}

int UserDefaults::integer(const QString &key, int defaultValue) const
{
    bool isNumber = false;
    const int number = text(key).value_or(QString()).toInt(&isNumber);
    return isNumber ? number : defaultValue;
}

void UserDefaults::setData(const QString &key, const QByteArray &value)
{
    set(key, QString::fromUtf8(value));
}

void UserDefaults::setString(const QString &key, const QString &value)
{
    set(key, value);
}

void UserDefaults::setBoolean(const QString &key, bool value)
{
    set(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void UserDefaults::setInteger(const QString &key, int value)
{
    set(key, QString::number(value));
}

std::optional<QString> UserDefaults::text(const QString &key) const
{
    const auto unsaved = m_unsaved.find(key);
    return unsaved != m_unsaved.end() ? unsaved->second : m_document.value(key.toUtf8());
}

void UserDefaults::set(const QString &key, const QString &value)
{
    m_unsaved[key] = value;
    saveUnsaved();
    Q_EMIT changed();
}

void UserDefaults::saveUnsaved()
{
    // Another program may have written meanwhile.
    auto written = contents(m_filePath);
    auto failure = written ? std::nullopt : std::optional(written.error());
    if (written) {
        IniDocument document(std::move(written).value());
        for (const auto &[key, value] : m_unsaved)
            document.setValue(key.toUtf8(), value);
        failure = replace(m_filePath, document.text());
        if (!failure) {
            m_document = std::move(document);
            m_unsaved.clear();
        }
    }
    if (failure)
        consoleLine(QStringLiteral("[Larkspool] Preferences could not be saved: ") + failure->description);
    watchFile();
}

void UserDefaults::watch()
{
    makeFolder(m_filePath);
    m_watcher = std::make_unique<QFileSystemWatcher>();
    m_settling.setSingleShot(true);
    m_settling.setInterval(SettlingTime);
    connect(&m_settling, &QTimer::timeout, this, &UserDefaults::readFile);
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, &UserDefaults::fileMayHaveChanged);
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &UserDefaults::fileMayHaveChanged);
    watchFile();
}

void UserDefaults::watchFile()
{
    if (!m_watcher)
        return;
    // A folder tells of files that come and go, a file of what is written into it; one that was replaced is
    // another one.
    for (const QString &path : {QFileInfo(m_filePath).path(), m_filePath}) {
        if (QFileInfo(path).isReadable())
            m_watcher->addPath(path);
    }
}

void UserDefaults::fileMayHaveChanged()
{
    watchFile();
    m_settling.start();
}

void UserDefaults::readFile()
{
    watchFile();
    const auto written = contents(m_filePath);
    if (!written || written.value() == m_document.text())
        return;
    m_document = IniDocument(written.value());
    Q_EMIT changed();
}

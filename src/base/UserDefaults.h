#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The user's preferences: an INI file (section General) that other programs may read and write as well.
/// Main thread only. An unreadable file reads as an empty one and is left as it is.
class UserDefaults
{
public:
    /// The file need not exist.
    explicit UserDefaults(QString filePath);

    /// The file of this program: `$XDG_CONFIG_HOME/larkspool/larkspool.conf`.
    static QString defaultFilePath();

    /// The bytes stored under the key; nothing when the key is absent.
    std::optional<QByteArray> data(const QString &key) const;

    /// The text stored under the key, else the default. Texts of the wrong kind are the default.
    QString string(const QString &key, const QString &defaultValue) const;
    /// The flag stored under the key ("true", "false", 1, 0), else the default.
    bool boolean(const QString &key, bool defaultValue) const;

private:
    /// The value as it stands in the file.
    QByteArray writtenValue(const QString &key) const;

    QString m_filePath;
};

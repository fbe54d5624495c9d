#pragma once

#include "base/IniDocument.h"
#include "base/Preferences.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <memory>
#include <optional>

class QFileSystemWatcher;

/// The user's preferences: an INI file (section General) that other programs may read and write as well.
///
/// A file that cannot be read is an empty one. What is set is written at once, by replacing the file as a
/// whole; everything else in it stays as it stands. What cannot be written holds until the program ends, and
/// a line says why. Main thread only.
class UserDefaults : public QObject
{
    Q_OBJECT

public:
    /// The file need not exist.
    explicit UserDefaults(QString filePath);
    ~UserDefaults() override;

    /// The file of this program: `$XDG_CONFIG_HOME/larkspool/larkspool.conf`.
    static QString defaultFilePath();

    /// From now on, what other programs write is noticed: `changed` tells of it. Makes the file's folder.
    void watch();

    /// The bytes stored under the key; nothing when the key is absent.
    std::optional<QByteArray> data(const QString &key) const;
    /// The text stored under the key, else the default. Texts of the wrong kind are the default.
    QString string(const QString &key, const QString &defaultValue) const;
    /// The flag stored under the key ("true", "false", 1, 0), else the default.
    bool boolean(const QString &key, bool defaultValue) const;
    /// The whole number stored under the key, else the default.
    int integer(const QString &key, int defaultValue) const;

    bool value(const Preference<bool> &preference) const
    {
        return boolean(preference.key, preference.defaultValue);
    }
    int value(const Preference<int> &preference) const
    {
        return integer(preference.key, preference.defaultValue);
    }
    QString value(const Preference<QLatin1String> &preference) const
    {
        return string(preference.key, preference.defaultValue);
    }

    void setData(const QString &key, const QByteArray &value);
    void setString(const QString &key, const QString &value);
    void setBoolean(const QString &key, bool value);
    void setInteger(const QString &key, int value);
    void setValue(const Preference<bool> &preference, bool value) { setBoolean(preference.key, value); }
    void setValue(const Preference<int> &preference, int value) { setInteger(preference.key, value); }
    void setValue(const Preference<QLatin1String> &preference, const QString &value)
    {
        setString(preference.key, value);
    }

Q_SIGNALS:
    /// A preference may have another value, by this program or by another one.
    void changed();

private:
    std::optional<QString> text(const QString &key) const;
    void set(const QString &key, const QString &value);
    void saveUnsaved();
    void watchFile();
    void fileMayHaveChanged();
    void readFile();

    QString m_filePath;
    /// The file as it was when it was read last.
    IniDocument m_document;
    /// What could not be written yet.
    std::map<QString, QString> m_unsaved;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    /// Until who writes has done so.
    QTimer m_settling;
};

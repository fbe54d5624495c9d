#pragma once

#include "platform/LoginItem.h"

#include <QStringList>

/// The login item as a file that the desktop reads at login (Desktop Application Autostart Specification):
/// "org.larkspool.Larkspool.desktop" in the user's autostart folder.
///
/// Where an entry of the program is installed for all users, which the user's own one shadows, unregistering
/// leaves an entry that says Hidden=true; otherwise it removes the file. A folder or file that is a link is
/// left alone, since it may lead to somebody else's. Done when a request returns.
class AutostartEntry : public LoginItem
{
public:
    struct Places {
        QString userFolder;        ///< made with the folders above it when it is missing; may be empty: none
        QStringList systemFolders; ///< in order of importance
    };

    /// `autostart` in $XDG_CONFIG_HOME, and in each folder of $XDG_CONFIG_DIRS (XDG Base Directory
    /// Specification).
    static Places defaultPlaces();

    /// For the program with the absolute path.
    AutostartEntry(Places places, QString programPath);

    void registerItem(Done onDone) override;
    void unregisterItem(Done onDone) override;

private:
    Result<Success> writeStarted() const;
    Result<Success> hideOrRemove() const;
    Result<QByteArray> existing() const;
    Result<Success> write(const QByteArray &text) const;
    Result<Success> remove() const;
    bool hasSystemEntry() const;

    Places m_places;
    QString m_path; ///< of the user's entry
    QString m_programPath;
};

#pragma once

#include <QString>

/// The proof, kept in a file, that the user has once allowed this program to press keys. A token is good for
/// one session; the next one comes with that. Only the user can read the file. What cannot be read or written
/// is done without: the user is asked again.
class RestoreToken
{
public:
    explicit RestoreToken(QString filePath);

    /// `larkspool/remote-desktop-token` in the folder for state: $XDG_STATE_HOME, else ~/.local/state (XDG
    /// Base Directory Specification).
    static QString defaultFilePath();

    /// Empty when there is none.
    QString read() const;
    /// Replaces it; an empty one forgets it.
    void write(const QString &token) const;

private:
    QString m_filePath;
};

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// What a desktop file says about an application (Desktop Entry Specification 1.5).
struct DesktopEntry {
    QString id;             ///< desktop file id without ".desktop": "org.mozilla.firefox", "kde-konsole"
    QString name;           ///< Name in the user's language
    QString icon;           ///< Icon: a theme name or an absolute path
    QString startupWmClass; ///< StartupWMClass; may be empty
    QString executable;     ///< the program that Exec starts, without its folder
    int argumentCount = 0;  ///< the arguments that Exec always passes; field codes (%U) do not count
    bool isShown = true;    ///< neither NoDisplay nor Terminal: a program with windows of its own
};

/// What a window says about the program that it belongs to; all of it may be empty.
struct WindowIdentity {
    QString applicationId; ///< _GTK_APPLICATION_ID or xdg_toplevel's app_id
    QString desktopFile;   ///< _KDE_NET_WM_DESKTOP_FILE: an id, or a path of a desktop file
    QString instance;      ///< WM_CLASS, first part (ICCCM 4.1.2.5)
    QString className;     ///< WM_CLASS, second part
    qint64 processIdentifier = -1;
};

/// The user's applications by their desktop files. Main thread only. Nothing is read before the first
/// question; the files are read again when a folder's modification time has changed since.
class DesktopEntries
{
public:
    /// Where the program runs. In a Flatpak the environment names the Flatpak's own folders, and the numbers
    /// of processes that windows tell are not those of /proc.
    enum class Surroundings { Desktop, Flatpak };

    /// By the description that a Flatpak has of itself.
    static Surroundings surroundings(const QString &flatpakDescription = QStringLiteral("/.flatpak-info"));
    /// `applications` in $XDG_DATA_HOME, then in each folder of $XDG_DATA_DIRS (XDG Base Directory
    /// Specification); in a Flatpak then where the desktop's folders are for one that may read them.
    static QStringList defaultFolders(Surroundings surroundings = DesktopEntries::surroundings());
    /// The user's first language, as a POSIX name, or "C": that of QLocale::uiLanguages(), by which the
    /// program's own texts are chosen, with its modifier. Hence the first entry of $LANGUAGE that names a
    /// language, where the locale is "C" as well (gettext ignores the variable there); for an empty entry, or
    /// without the variable, $LC_ALL, $LC_MESSAGES or $LANG, the first that is set. Names have no second
    /// choice as the texts have: in "fr:de" they are French or as they are without a language.
    static QByteArray messagesLocale();

    /// The folders in order of precedence, and the POSIX name of the user's language ("de_AT.UTF-8@euro").
    explicit DesktopEntries(QStringList folders = defaultFolders(),
        const QByteArray &locale = messagesLocale(),
        Surroundings surroundings = DesktopEntries::surroundings());

    /// The application that a window belongs to: by the id that the window names, by StartupWMClass, by a
    /// desktop id (or its last dotted part) equal to one of the window's classes in any letter case, by
    /// Exec's program (not in a Flatpak).
    std::optional<DesktopEntry> entryOf(const WindowIdentity &window);

    /// The application with the desktop id, in the very letter case.
    std::optional<DesktopEntry> entry(const QString &id);

private:
    struct Folder {
        QString path;
        QDateTime modified; ///< invalid: it was not there
    };

    void refresh();
    bool isCurrent() const;
    void readTree(const QString &root, QSet<QString> &seenIds);
    const DesktopEntry *byStartupWmClass(const QString &name) const;
    const DesktopEntry *byId(const QString &name) const;
    const DesktopEntry *byExecutable(const QString &name) const;
    const DesktopEntry *byNameOfWindow(const WindowIdentity &window) const;

    QStringList m_roots;
    QByteArrayList m_nameKeys;
    Surroundings m_surroundings;
    bool m_isRead = false;
    std::vector<Folder> m_folders;
    std::vector<DesktopEntry> m_entries; ///< in order of precedence, then by id
    QHash<QString, qsizetype> m_indexById;
};

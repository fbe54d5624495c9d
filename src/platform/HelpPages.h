#pragma once

#include <QString>
#include <QUrl>

/// The pages about the program that come with it, for any browser.
enum class HelpPage {
    Overview, ///< what the program does, and its keys
    Privacy,  ///< what it keeps, and where
};

/// Where the pages are looked for, and put; folders.
struct HelpPlaces {
    QString installed; ///< those that were installed with the program; may be empty: none
    QString cache;     ///< for those that the program has inside; made when it is missing

    /// "../share/larkspool/help" beside the running program, and "larkspool/help" in $XDG_CACHE_HOME. Pages
    /// elsewhere may be another version's. Where a Flatpak has its description, those in the cache alone: the
    /// toolkit asks the desktop to open a page for writing, too, which it refuses for an installed one.
    static HelpPlaces standard(const QString &flatpakDescription = QStringLiteral("/.flatpak-info"));
};

/// The address of a page's file, for a browser: the installed one, or a copy of the one inside the program,
/// which is written for the purpose. Invalid where that cannot be written.
QUrl helpPage(HelpPage page, const HelpPlaces &places = HelpPlaces::standard());

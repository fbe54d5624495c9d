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
    QString installed; ///< those that were installed with the program
    QString cache;     ///< for those that the program has inside; made when it is missing

    /// "../share/larkspool/help" beside the running program, and "larkspool/help" in $XDG_CACHE_HOME. Pages
    /// elsewhere may be another version's.
    static HelpPlaces standard();
};

/// The address of a page's file, for a browser: the installed one, or a copy of the one inside the program,
/// which is written for the purpose. Invalid where that cannot be written.
QUrl helpPage(HelpPage page, const HelpPlaces &places = HelpPlaces::standard());

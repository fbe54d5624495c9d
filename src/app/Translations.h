#pragma once

#include <QLocale>
#include <QTranslator>

/// The program's texts in the user's language, from the moment this is made until it ends. Made before the
/// first text is read, and after the application object. What has no translation is in English.
///
/// The language is the first of `locale.uiLanguages()` that the program knows: of the environment's LANGUAGE,
/// else of LC_ALL, LC_MESSAGES or LANG, the first that is set. The toolkit's own texts stay in English: none
/// is to be seen, and what it says of failures goes to the log.
class Translations
{
public:
    explicit Translations(const QLocale &locale = QLocale());

private:
    // The one that is installed last is asked first. Each takes itself out when it ends.
    QTranslator m_englishPlurals;
    QTranslator m_language;
};

#include "ui/language/DisplayName.h"

#include "store/ClipCategory.h"
#include "store/PasteTemplate.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

constexpr auto CategoryContext = "CategoryName";
constexpr auto TemplateContext = "TemplateName";

// For the translator's list; the names themselves are the records' own.
[[maybe_unused]] constexpr const char *TranslatedNames[] = {
    //: A category of entries that are plain text.
    QT_TRANSLATE_NOOP("CategoryName", "Text"),
    //: A category of entries that are web addresses.
    QT_TRANSLATE_NOOP("CategoryName", "URL"),
    //: A category of entries that are images.
    QT_TRANSLATE_NOOP("CategoryName", "Image"),
    //: A category of entries that are files.
    QT_TRANSLATE_NOOP("CategoryName", "File"),
    //: A category of entries that are text with fonts and colours.
    QT_TRANSLATE_NOOP("CategoryName", "Rich Text"),
    //: A way of combining several entries into one text: with a comma between them.
    QT_TRANSLATE_NOOP("TemplateName", "Comma"),
    //: A way of combining entries: each on a line of its own.
    QT_TRANSLATE_NOOP("TemplateName", "New Line"),
    //: A way of combining entries: with a blank between them. Not the key.
    QT_TRANSLATE_NOOP("TemplateName", "Space"),
    //: A way of combining entries: with a tabulator between them. Not the key.
    QT_TRANSLATE_NOOP("TemplateName", "Tab"),
    //: A way of combining entries: each in straight double quotes. The name is in such quotes itself.
    QT_TRANSLATE_NOOP("TemplateName", "\"Double Quotes\""),
    //: A way of combining entries: each in straight single quotes. The name is in such quotes itself.
    QT_TRANSLATE_NOOP("TemplateName", "'Single Quotes'"),
    //: A way of combining entries: as an array in the format JSON.
    QT_TRANSLATE_NOOP("TemplateName", "JSON Array"),
    //: A way of combining entries: as a list, a dash before each.
    QT_TRANSLATE_NOOP("TemplateName", "Bullet List"),
    //: A way of combining entries: as a list, a number before each.
    QT_TRANSLATE_NOOP("TemplateName", "Numbered"),
    //: A way of combining entries: as the list behind the word IN of a database query.
    QT_TRANSLATE_NOOP("TemplateName", "SQL IN"),
};

bool hasSeededName(const ClipCategory &category)
{
    // Which of the defaults it was made as, its symbol tells: nobody can change that.
    return category.isDefault() && std::ranges::any_of(ClipCategory::defaults(), [&](const auto &entry) {
        return entry.name == category.name() && entry.icon == category.icon();
    });
}

bool hasSeededName(const PasteTemplate &pasteTemplate)
{
    const auto &defaults = PasteTemplate::defaults();
    return pasteTemplate.isDefault() &&
        std::ranges::find(defaults, pasteTemplate.name(), &PasteTemplate::Default::name) != defaults.end();
}

template<class Record>
QString displayNameIn(const char *context, const Record &record)
{
    if (!hasSeededName(record))
        return record.name();
    return QCoreApplication::translate(context, record.name().toUtf8().constData());
}

} // namespace

QString displayName(const ClipCategory &category)
{
    return displayNameIn(CategoryContext, category);
}

QString displayName(const PasteTemplate &pasteTemplate)
{
    return displayNameIn(TemplateContext, pasteTemplate);
}

QString storedName(const ClipCategory &category, const QString &edited)
{
    return edited == displayName(category) ? category.name() : edited;
}

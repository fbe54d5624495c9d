#include "app/Translations.h"

#include "fakes/FakeLocalEvents.h"
#include "fakes/FakeLoginItem.h"
#include "store/Seeding.h"
#include "support/CapturedConsole.h"
#include "support/HistoryViewFixture.h"
#include "ui/history/RelativeDate.h"
#include "ui/history/RowText.h"
#include "ui/language/DisplayName.h"
#include "ui/settings/SettingsView.h"

#include <QGuiApplication>

namespace
{

const QLocale English(QLocale::English, QLocale::UnitedKingdom);
const QLocale German(QLocale::German, QLocale::Germany);

QString text(const char *context, const char *source, int number = -1)
{
    return QCoreApplication::translate(context, source, nullptr, number);
}

struct LanguageCase {
    const char *locale;
    const char *history;
    const char *oneItem;
};

class Language : public ::testing::TestWithParam<LanguageCase>
{
};

TEST_P(Language, IsThatOfTheLocaleOrElseEnglishWithItsPlurals)
{
    const Translations translations(QLocale(QString::fromLatin1(GetParam().locale)));
    EXPECT_EQ(text("HistoryList", "History"), QString::fromUtf8(GetParam().history));
    EXPECT_EQ(text("HeaderBar", "%n items", 1), QString::fromUtf8(GetParam().oneItem));
}

INSTANTIATE_TEST_SUITE_P(Table, Language,
    ::testing::Values(LanguageCase{"C", "History", "1 item"}, LanguageCase{"en_US", "History", "1 item"},
        LanguageCase{"en_GB", "History", "1 item"}, LanguageCase{"fr_FR", "History", "1 item"},
        LanguageCase{"de_DE", "Verlauf", "1 Eintrag"}, LanguageCase{"de_AT", "Verlauf", "1 Eintrag"},
        LanguageCase{"de_CH", "Verlauf", "1 Eintrag"}));

TEST(Translations, EndWithTheObject)
{
    {
        const Translations translations(German);
        ASSERT_EQ(text("HistoryList", "History"), QStringLiteral("Verlauf"));
    }
    EXPECT_EQ(text("HistoryList", "History"), QStringLiteral("History"));
}

TEST(Translations, SayTheDirectionOfTheLayout)
{
    const Translations translations(German);
    EXPECT_EQ(text("QGuiApplication", "QT_LAYOUT_DIRECTION"), QStringLiteral("LTR"));
}

struct PluralCase {
    const char *context;
    const char *source;
    int number;
    const char *english;
    const char *german;
};

class Plurals : public ::testing::TestWithParam<PluralCase>
{
};

TEST_P(Plurals, AreThoseOfTheLanguage)
{
    const PluralCase &row = GetParam();
    {
        const Translations translations(English);
        EXPECT_EQ(text(row.context, row.source, row.number), QString::fromUtf8(row.english));
    }
    const Translations translations(German);
    EXPECT_EQ(text(row.context, row.source, row.number), QString::fromUtf8(row.german));
}

INSTANTIATE_TEST_SUITE_P(Table, Plurals,
    ::testing::Values(PluralCase{"HeaderBar", "%n items", 0, "0 items", "0 Einträge"},
        PluralCase{"HeaderBar", "%n items", 1, "1 item", "1 Eintrag"},
        PluralCase{"HeaderBar", "%n items", 2, "2 items", "2 Einträge"},
        PluralCase{"HeaderBar", "%n items", 1001, "1001 items", "1001 Einträge"},
        PluralCase{"SelectionBar", "%n items selected", 1, "1 item selected", "1 Eintrag ausgewählt"},
        PluralCase{"SelectionBar", "%n items selected", 3, "3 items selected", "3 Einträge ausgewählt"},
        PluralCase{"CombinePanel", "Combine %n items", 2, "Combine 2 items", "2 Einträge kombinieren"}));

struct AgeCase {
    qint64 seconds;
    const char *english;
    const char *german;
};

class Ages : public ::testing::TestWithParam<AgeCase>
{
protected:
    ~Ages() override { QLocale::setDefault(m_before); }

    static QString shownIn(const QLocale &locale)
    {
        const QDateTime now(QDate(2026, 3, 10), QTime(12, 0), Qt::LocalTime);
        QLocale::setDefault(locale);
        const Translations translations(locale);
        return relativeDisplay(now.addSecs(-GetParam().seconds), now);
    }

private:
    QLocale m_before;
};

TEST_P(Ages, AreShortInTheLanguageAndDatesAreTheLocales)
{
    EXPECT_EQ(shownIn(English), QString::fromUtf8(GetParam().english));
    EXPECT_EQ(shownIn(German), QString::fromUtf8(GetParam().german));
}

INSTANTIATE_TEST_SUITE_P(Table, Ages,
    ::testing::Values(AgeCase{0, "now", "jetzt"}, AgeCase{59, "now", "jetzt"},
        AgeCase{60, "1m", "1\u00a0Min."}, AgeCase{3599, "59m", "59\u00a0Min."},
        AgeCase{3600, "1h", "1\u00a0Std."}, AgeCase{86399, "23h", "23\u00a0Std."},
        AgeCase{86400, "1d", "1\u00a0Tag"}, AgeCase{2 * 86400, "2d", "2\u00a0Tage"},
        AgeCase{604799, "6d", "6\u00a0Tage"}, AgeCase{604800, "03/03/2026", "03.03.26"}));

TEST(Sizes, AreSaidInTheLanguage)
{
    const Translations translations(German);
    EXPECT_EQ(rowtext::sizeText(12 * 1024), QStringLiteral("12\u00a0KB"));
}

// What is stored in English

QStringList shownCategories()
{
    QStringList names;
    for (const auto &entry : ClipCategory::defaults())
        names.append(displayName(ClipCategory(entry.name, entry.colorHex, entry.icon, 0, true)));
    return names;
}

PasteTemplate pasteTemplate(const QString &name, bool isDefault)
{
    return {name, QString(), QString(), QString(), QString(), QString(), 0, isDefault};
}

QStringList shownTemplates()
{
    QStringList names;
    for (const auto &entry : PasteTemplate::defaults())
        names.append(displayName(pasteTemplate(entry.name, true)));
    return names;
}

TEST(DisplayNames, OfTheProgramsOwnCategoriesAndTemplatesAreInTheLanguage)
{
    const Translations translations(German);
    EXPECT_EQ(shownCategories().join(u'|'), QStringLiteral("Text|URL|Bild|Datei|Rich-Text"));
    EXPECT_EQ(shownTemplates().join(u'|'),
        QStringLiteral("Komma|Neue Zeile|Leerzeichen|Tabulator|\"Doppelte Anführungszeichen\"|"
                       "'Einfache Anführungszeichen'|JSON-Array|Aufzählung|Nummerierung|SQL IN"));
}

TEST(DisplayNames, InEnglishAreTheStoredOnes)
{
    const Translations translations(English);
    EXPECT_EQ(shownCategories().join(u'|'), QStringLiteral("Text|URL|Image|File|Rich Text"));
    for (const auto &entry : PasteTemplate::defaults())
        EXPECT_EQ(displayName(pasteTemplate(entry.name, true)), entry.name);
}

struct CategoryCase {
    const char *name;
    const char *icon;
    bool isDefault;
    const char *shown;
};

class CategoryNames : public ::testing::TestWithParam<CategoryCase>
{
};

TEST_P(CategoryNames, AreTranslatedOnlyOfADefaultOneWithTheNameThatItWasMadeWith)
{
    const Translations translations(German);
    const CategoryCase &row = GetParam();
    const ClipCategory category(QString::fromUtf8(row.name), QStringLiteral("#3F78F3"),
        QString::fromLatin1(row.icon), 0, row.isDefault);
    EXPECT_EQ(displayName(category), QString::fromUtf8(row.shown));
}

INSTANTIATE_TEST_SUITE_P(Table, CategoryNames,
    ::testing::Values(CategoryCase{"Image", "photo", true, "Bild"},
        // The user has made it, or has called it so.
        CategoryCase{"Image", "tag.fill", false, "Image"}, CategoryCase{"Image", "photo", false, "Image"},
        CategoryCase{"Image", "doc.text", true, "Image"}, CategoryCase{"image", "photo", true, "image"},
        CategoryCase{"Photos", "photo", true, "Photos"}, CategoryCase{"", "photo", true, ""}));

TEST(DisplayNames, OfATemplateThatIsNotTheProgramsOwnStandAsTheyAre)
{
    const Translations translations(German);
    EXPECT_EQ(displayName(pasteTemplate(QStringLiteral("Comma"), false)), QStringLiteral("Comma"));
    EXPECT_EQ(displayName(pasteTemplate(QStringLiteral("Commas"), true)), QStringLiteral("Commas"));
}

/// The views in German, over a store as the program makes it.
class InGerman : public HistoryViewFixture
{
protected:
    InGerman()
    {
        CapturedConsole console;
        seedDefaultCategories(&m_store.container());
        seedDefaultTemplates(&m_store.container());
    }
    ~InGerman() override { QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto); }

    std::shared_ptr<ClipCategory> imageCategory() { return m_store.context().fetch<ClipCategory>().at(2); }
    static QStringList names(const QAbstractItemModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(model.index(row, 0).data(Qt::UserRole).toString());
        return list;
    }

private:
    Translations m_translations{German};
};

TEST_F(InGerman, ChipsAndTheMenuOfARowShowTheTranslatedNames)
{
    const auto view = makeView();
    const QStringList german{QStringLiteral("Text"), QStringLiteral("URL"), QStringLiteral("Bild"),
        QStringLiteral("Datei"), QStringLiteral("Rich-Text")};
    EXPECT_EQ(names(*view->categories()), german);
    EXPECT_EQ(view->categoryNames(), german);
}

TEST_F(InGerman, TheCategorySearchLooksInTheNamesThatAreShown)
{
    const auto view = makeView();
    view->setCategorySearchText(QStringLiteral("bil"));
    EXPECT_EQ(names(*view->matchingCategories()), QStringList(QStringLiteral("Bild")));
    view->setCategorySearchText(QStringLiteral("image"));
    EXPECT_EQ(names(*view->matchingCategories()), QStringList());
}

TEST_F(InGerman, ACategoryStillStandsForItsKindOfEntry)
{
    add(Entry{"/home/ann/report.pdf", ClipboardItemType::File, std::nullopt, std::nullopt, false});
    add("text");
    const auto view = makeView();
    view->clickChip(3);
    EXPECT_EQ(contents(*view), QByteArrayList{"/home/ann/report.pdf"});
}

TEST_F(InGerman, ACardNamesItsCategoryOrItsKind)
{
    add(Entry{"/home/ann/report.pdf", ClipboardItemType::File, std::nullopt, std::nullopt, false});
    add(Entry{"assigned", ClipboardItemType::Text, std::nullopt, imageCategory()->id(), false});
    const auto view = makeView();
    const auto label = [&](int row) {
        return view->filteredItems()->index(row).data(HistoryListModel::Label).toString();
    };
    EXPECT_EQ(label(0), QStringLiteral("BILD"));
    EXPECT_EQ(label(1), QStringLiteral("DATEI"));
}

TEST_F(InGerman, TheTemplatesAreTranslatedAndDoWhatTheyDo)
{
    add("eggs");
    add("oat milk");
    const auto view = makeView();
    view->setSelectedIds({view->filteredItems()->record(0)->id(), view->filteredItems()->record(1)->id()});
    press(*view, Qt::Key_Return);
    CombinePanel *const panel = view->combinePanel();
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->title(), QStringLiteral("2 Einträge kombinieren"));
    EXPECT_EQ(names(*panel->templates()).at(panel->effectiveTemplateIndex()), QStringLiteral("Neue Zeile"));
    panel->setSelectedTemplateIndex(8);
    EXPECT_EQ(names(*panel->templates()).at(8), QStringLiteral("Nummerierung"));
    EXPECT_EQ(panel->preview(), QStringLiteral("1. oat milk\n2. eggs"));
}

TEST_F(InGerman, TheFormShowsTheTranslatedNameAndSavedUnchangedKeepsTheStoredOne)
{
    CategoryManagerView manager(m_store.context());
    EXPECT_EQ(names(*manager.categories()).at(2), QStringLiteral("Bild"));
    manager.edit(2);
    EXPECT_EQ(manager.newName(), QStringLiteral("Bild"));
    manager.setNewColorHex(QStringLiteral("#33B873"));
    manager.saveForm();
    EXPECT_EQ(imageCategory()->name(), QStringLiteral("Image"));
    EXPECT_EQ(imageCategory()->colorHex(), QStringLiteral("#33B873"));
}

TEST_F(InGerman, ANameThatTheUserGivesIsStoredAndShownAsItStands)
{
    CategoryManagerView manager(m_store.context());
    manager.edit(2);
    manager.setNewName(QStringLiteral("Fotos"));
    manager.saveForm();
    EXPECT_EQ(imageCategory()->name(), QStringLiteral("Fotos"));
    EXPECT_EQ(names(*manager.categories()).at(2), QStringLiteral("Fotos"));
}

TEST_F(InGerman, ARecordThatIsGivenItsEnglishNameIsTranslatedAgain)
{
    CategoryManagerView manager(m_store.context());
    manager.edit(2);
    manager.setNewName(QStringLiteral("Image"));
    manager.saveForm();
    EXPECT_EQ(imageCategory()->name(), QStringLiteral("Image"));
    EXPECT_EQ(names(*manager.categories()).at(2), QStringLiteral("Bild"));
}

TEST_F(InGerman, ColoursAreNamedInGermanAndStoredAsTheyWere)
{
    const CategoryManagerView manager(m_store.context());
    QStringList colors;
    for (const QVariant &color : manager.palette())
        colors.append(color.toMap().value(QStringLiteral("text")).toString());
    EXPECT_EQ(colors.join(u'|'),
        QStringLiteral("Blau|Grün|Orange|Violett|Rot|Rosa|Blaugrün|Gelb|Indigo|Braun|Minzgrün|Stahlgrau"));
    EXPECT_EQ(manager.palette().front().toMap().value(QStringLiteral("value")), QStringLiteral("#3F78F3"));
}

TEST_F(InGerman, AKeyCombinationNamesItsKeyInGerman)
{
    QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(QStringLiteral("larkspool.conf")));
    FakeLoginItem loginItem;
    constexpr quint32 SpaceCode = 49;
    defaults.setData(preference::HotkeyCombo, KeyCombo{SpaceCode, CommandKey | ShiftKey}.encoded());
    SettingsView view({.defaults = defaults,
        .notifications = m_notifications,
        .events = m_events,
        .loginItem = loginItem,
        .modelContext = nullptr,
        .onRecording = [](ShortcutRecorderView::Recording) {},
        .openPage = [](const QUrl &) {}});
    EXPECT_EQ(view.shortcutRecorder()->displayString(), QStringLiteral("⌘ ⇧ Leertaste"));
    defaults.setData(preference::HotkeyCombo, KeyCombo::standard().encoded());
    view.shortcutRecorder()->loadCombo();
    EXPECT_EQ(view.shortcutRecorder()->displayString(), QStringLiteral("⌘ ⇧ V"));
}

// From right to left

struct ArrowCase {
    Qt::LayoutDirection direction;
    int key;
    int row;
};

class Arrows : public InGerman, public ::testing::WithParamInterface<ArrowCase>
{
};

TEST_P(Arrows, LeadAmongTheCategoriesToTheOneThatIsSeenThere)
{
    QGuiApplication::setLayoutDirection(GetParam().direction);
    const auto view = makeView();
    view->clickChip(2);
    press(*view, GetParam().key);
    EXPECT_EQ(view->selectedFilterId(), view->categories()->record(GetParam().row)->id());
}

TEST_P(Arrows, LeadAmongTheTemplatesToTheOneThatIsSeenThere)
{
    QGuiApplication::setLayoutDirection(GetParam().direction);
    add("eggs");
    add("oat milk");
    const auto view = makeView();
    view->setSelectedIds({view->filteredItems()->record(0)->id(), view->filteredItems()->record(1)->id()});
    press(*view, Qt::Key_Return);
    ASSERT_TRUE(view->combinePanel());
    view->combinePanel()->setSelectedTemplateIndex(2);
    constexpr quint16 LeftCode = 123;
    constexpr quint16 RightCode = 124;
    m_events.press(GetParam().key == Qt::Key_Left ? LeftCode : RightCode, EventModifier::None);
    m_queue.drain();
    EXPECT_EQ(view->combinePanel()->selectedTemplateIndex(), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(Table, Arrows,
    ::testing::Values(ArrowCase{Qt::LeftToRight, Qt::Key_Left, 1},
        ArrowCase{Qt::LeftToRight, Qt::Key_Right, 3}, ArrowCase{Qt::RightToLeft, Qt::Key_Left, 3},
        ArrowCase{Qt::RightToLeft, Qt::Key_Right, 1}));

} // namespace

#include "MirroringTest.h"
#include "PanelScene.h"

#include <array>

/// What the panel looks like in each of its states, compared with the pictures in docs/pictures/panel.
namespace
{

using State = PictureState<PanelScene>;

void addEverything(PanelScene &scene)
{
    scene.addDefaults();
    scene.addSamples();
}

void stay(PanelScene &) {}

void seek(PanelScene &scene, const QString &text)
{
    scene.view().setSearchExpanded(true);
    scene.view().setSearchText(text);
    scene.view().setFocus(ClipboardHistoryView::Focus::Search);
}

void selectThree(PanelScene &scene)
{
    for (const int row : {0, 1, 3})
        scene.view().select(row, int(Qt::ControlModifier));
    scene.view().setSelectedIndex(1);
}

void combine(PanelScene &scene)
{
    const auto &items = scene.view().filteredItems()->rows();
    scene.view().setSelectedIds({items[5]->id(), items[6]->id(), items[7]->id()});
    scene.view().handleKey(Qt::Key_Return, 0, QString());
    scene.view().combinePanel()->setSelectedTemplateIndex(7);
}

void openHeaderMenu(PanelScene &scene)
{
    scene.click(scene.inLayout({652, 24}));
    scene.press(Qt::Key_Down);
}

/// The menu of a row, and in it that of the categories.
void openMenuAt(PanelScene &scene, const QPointF &place)
{
    scene.click(place, Qt::RightButton);
    // A submenu is where its row has been laid out.
    (void)scene.picture();
    for (int step = 0; step < 3; ++step)
        scene.press(Qt::Key_Down);
    scene.press(scene.onwards());
}

void openRowMenu(PanelScene &scene)
{
    openMenuAt(scene,
        scene.placeOf(QStringLiteral("https://docs.example.org/guides/clipboard?section=selections#owners")));
}

void addLongNames(PanelScene &scene)
{
    scene.addCategories({QStringLiteral("Rechtsschutzversicherungsgesellschaften"),
        QStringLiteral("Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft"),
        QStringLiteral("Kraftfahrzeughaftpflichtversicherungsunterlagen")});
    scene.addText(
        "Der Name der Anwendung ist fünfhundert Zeichen lang.", QStringLiteral("Anwendung ").repeated(50));
    scene.addAssigned("Sehr geehrte Damen und Herren,\nanbei die Unterlagen.",
        QStringLiteral("Textverarbeitung"), QStringLiteral("Grundstücksverkehrsgenehmigungszuständigkeiten"));
}

void addRightToLeft(PanelScene &scene)
{
    scene.addDefaults();
    scene.addText("photo\xe2\x80\xaegpj.exe and \xe2\x81\xa7isolated\xe2\x81\xa9 text");
    scene.addText("left שלום right", QStringLiteral("עורך טקסט"));
    scene.addText("שלום עולם\nטקסט מימין לשמאל, 42 שורות", QStringLiteral("עורך טקסט"));
    scene.addText("مرحبا بالعالم\nهذا نص من اليمين إلى اليسار", QStringLiteral("محرر النصوص"));
}

void addEverythingInGerman(PanelScene &scene)
{
    scene.setLanguage(QLocale(QLocale::German));
    addEverything(scene);
}

void addRightToLeftMirrored(PanelScene &scene)
{
    scene.setLayoutDirection(Qt::RightToLeft);
    addRightToLeft(scene);
    scene.addSamples();
}

/// Where both menus have room.
void openMenuOfText(PanelScene &scene)
{
    const QPointF row = scene.placeOf(QStringLiteral("שלום עולם\nטקסט מימין לשמאל, 42 שורות"));
    openMenuAt(scene, scene.inLayout({200, row.y()}));
}

void addLongEntry(PanelScene &scene)
{
    addEverything(scene);
    scene.addText(
        QByteArray("The log of a day, line after line.\n").repeated(20'000), QStringLiteral("Terminal"));
}

void refuseEdit(PanelScene &scene)
{
    scene.view().setSelectedIndex(1);
    scene.view().startEditing(1);
}

const std::array States{
    State{"welcome", Scales::One, [](PanelScene &scene) { scene.addDefaults(); }, stay},
    State{"list", Scales::Both, addEverything, stay},
    State{"list-middle", Scales::One, addEverything,
        [](PanelScene &scene) { scene.view().setSelectedIndex(4); }},
    State{"hovered-row", Scales::One, addEverything,
        [](PanelScene &scene) {
            scene.moveMouse(scene.placeOf(
                QStringLiteral("https://docs.example.org/guides/clipboard?section=selections#owners")));
        }},
    State{"search-hits", Scales::Both, addEverything,
        [](PanelScene &scene) { seek(scene, QStringLiteral("or")); }},
    State{"search-no-hits", Scales::One, addEverything,
        [](PanelScene &scene) { seek(scene, QStringLiteral("larkspur")); }},
    State{
        "category-filter", Scales::One, addEverything, [](PanelScene &scene) { scene.view().clickChip(2); }},
    State{"category-search", Scales::One, addEverything,
        [](PanelScene &scene) {
            scene.view().setCategorySearching(true);
            scene.view().setCategorySearchText(QStringLiteral("t"));
            scene.view().setFocus(ClipboardHistoryView::Focus::CategorySearch);
        }},
    State{"multi-selection", Scales::One, addEverything, selectThree},
    State{"combine", Scales::Both, addEverything, combine},
    State{"editing", Scales::Both, addEverything, [](PanelScene &scene) { scene.view().startEditing(0); }},
    State{"creating", Scales::One, addEverything,
        [](PanelScene &scene) {
            scene.view().startCreatingNew();
            scene.view().setNewItemText(QStringLiteral("A note that is\nnot copied but written"));
            scene.press(Qt::Key_End, Qt::ControlModifier);
        }},
    State{"header-menu", Scales::Both, addEverything, openHeaderMenu},
    State{"row-menu", Scales::Both, addEverything, openRowMenu},
    State{"edit-refused", Scales::One, addLongEntry, refuseEdit},
    State{"long-names", Scales::One, addLongNames, stay},
    State{"right-to-left", Scales::One, addRightToLeft, stay},
    State{"german-list", Scales::One, addEverythingInGerman, stay},
    State{"german-combine", Scales::One, addEverythingInGerman, combine},
    State{"mirrored-list", Scales::One, addRightToLeftMirrored, openMenuOfText},
};

using PanelPictures = PictureTest<PanelScene>;

TEST_P(PanelPictures, AreAsExpected)
{
    compareWith(QStringLiteral("panel"));
}

INSTANTIATE_TEST_SUITE_P(StatesAndAppearances, PanelPictures,
    ::testing::Combine(::testing::ValuesIn(States), bothAppearances()), pictureName<PanelScene>);

using PanelMirroring = MirroringTest<PanelScene>;

TEST_P(PanelMirroring, IsThatOfEverything)
{
    expectMirrored();
}

INSTANTIATE_TEST_SUITE_P(States, PanelMirroring, ::testing::ValuesIn(States), stateName<PanelScene>);

} // namespace

#include "MirroringTest.h"
#include "SettingsScene.h"

#include <array>

/// What the settings look like in each of their states, compared with the pictures in docs/pictures/settings.
namespace
{

using State = PictureState<SettingsScene>;

void addDefaults(SettingsScene &scene)
{
    scene.addDefaults();
}

void stay(SettingsScene &) {}

void chooseCategories(SettingsScene &scene)
{
    scene.choose("&Categories");
}

void chooseShortcuts(SettingsScene &scene)
{
    scene.choose("&Shortcuts");
}

void chooseStorage(SettingsScene &scene)
{
    scene.choose("S&torage");
}

void chooseAbout(SettingsScene &scene)
{
    scene.choose("&About");
}

void pressTab(SettingsScene &scene, int times)
{
    for (int time = 0; time < times; ++time)
        scene.press(Qt::Key_Tab);
}

void nameNewCategory(SettingsScene &scene)
{
    chooseCategories(scene);
    scene.click(scene.placeOf(scene.shown("CategoryManager", "Add &new category")));
    scene.moveMouse({2, 398});
    scene.type(QStringLiteral("Recipes"));
    // It has a colour by chance.
    scene.view().categoryManager()->setNewColorHex(QStringLiteral("#33B873"));
}

void editCategory(SettingsScene &scene)
{
    chooseCategories(scene);
    scene.view().categoryManager()->edit(2);
}

void record(SettingsScene &scene)
{
    chooseShortcuts(scene);
    scene.click(scene.placeOf(scene.view().shortcutRecorder()->displayString()));
    scene.moveMouse({2, 398});
}

void openPicker(SettingsScene &scene)
{
    chooseStorage(scene);
    scene.click(scene.placeOf(QStringLiteral("500")));
    scene.press(Qt::Key_Down);
}

void addLongName(SettingsScene &scene)
{
    scene.addDefaults();
    scene.addCategory(QStringLiteral("Unterlagen ").repeated(910).left(10'000));
    scene.addCategory(QStringLiteral("Donaudampfschifffahrtsgesellschaft").repeated(10));
}

void addOddNames(SettingsScene &scene)
{
    scene.addCategory(QStringLiteral("two\nlines\tand\u0007 a bell"));
    scene.addCategory(QStringLiteral("photo\u202egpj.exe"));
    scene.addCategory(QStringLiteral("שלום עולם"));
    scene.addCategory(QStringLiteral("مرحبا بالعالم"));
    scene.addCategory(QStringLiteral("left שלום right"));
    scene.addCategory(QStringLiteral("<b>bold</b> &amp; &letters"));
    scene.addCategory(QStringLiteral(" "));
}

const std::array States{
    State{"general", Scales::Both, addDefaults, stay},
    State{"categories", Scales::Both, addDefaults, chooseCategories},
    State{"shortcuts", Scales::One, addDefaults, chooseShortcuts},
    State{"storage", Scales::One, addDefaults, chooseStorage},
    State{"about", Scales::One, addDefaults, chooseAbout},
    State{"new-category", Scales::Both, addDefaults, nameNewCategory},
    State{"edit-category", Scales::One, addDefaults, editCategory},
    State{"recording", Scales::One, addDefaults, record},
    State{"picker", Scales::One, addDefaults, openPicker},
    State{"no-categories", Scales::One, stay, chooseCategories},
    State{"long-names", Scales::One, addLongName,
        [](SettingsScene &scene) {
            chooseCategories(scene);
            // Rows are there once they have been laid out.
            (void)scene.picture();
            constexpr int ButtonsInARow = 4;
            pressTab(scene, 6 * ButtonsInARow + 1);
        }},
    State{"odd-names", Scales::One, addOddNames, chooseCategories},
    State{"focus-toggle", Scales::One, addDefaults, [](SettingsScene &scene) { pressTab(scene, 2); }},
    State{"focus-swatch", Scales::One, addDefaults, [](SettingsScene &scene) { pressTab(scene, 5); }},
    State{"focus-tab", Scales::One, addDefaults,
        [](SettingsScene &scene) {
            scene.press(scene.onwards());
            scene.press(scene.onwards());
        }},
    State{"focus-white-swatch", Scales::One, addDefaults,
        [](SettingsScene &scene) {
            pressTab(scene, 5);
            for (int step = 0; step < 7; ++step)
                scene.press(scene.onwards());
        }},
    State{"focus-row-button", Scales::One, addDefaults,
        [](SettingsScene &scene) {
            chooseCategories(scene);
            pressTab(scene, 3);
        }},
    State{"focus-link", Scales::One, addDefaults,
        [](SettingsScene &scene) {
            chooseAbout(scene);
            pressTab(scene, 1);
        }},
    State{"access-keys", Scales::One, addDefaults,
        [](SettingsScene &scene) { scene.hold(Qt::Key_Alt, Qt::AltModifier); }},
    State{"german-categories", Scales::One,
        [](SettingsScene &scene) {
            scene.setLanguage(QLocale(QLocale::German));
            scene.addDefaults();
        },
        chooseCategories},
    State{"mirrored-general", Scales::One,
        [](SettingsScene &scene) {
            scene.setLayoutDirection(Qt::RightToLeft);
            scene.addDefaults();
        },
        stay},
};

using SettingsPictures = PictureTest<SettingsScene>;

TEST_P(SettingsPictures, AreAsExpected)
{
    compareWith(QStringLiteral("settings"));
}

INSTANTIATE_TEST_SUITE_P(StatesAndAppearances, SettingsPictures,
    ::testing::Combine(::testing::ValuesIn(States), bothAppearances()), pictureName<SettingsScene>);

using SettingsMirroring = MirroringTest<SettingsScene>;

TEST_P(SettingsMirroring, IsThatOfEverything)
{
    expectMirrored();
}

INSTANTIATE_TEST_SUITE_P(States, SettingsMirroring, ::testing::ValuesIn(States), stateName<SettingsScene>);

} // namespace

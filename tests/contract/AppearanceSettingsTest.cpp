#include "platform/linux/AppearanceSettings.h"

#include <gtest/gtest.h>

namespace
{

using Scheme = Appearance::ColorScheme;
using Setting = AppearanceSettings::Setting;

std::optional<Scheme> schemeFor(const QVariant &value)
{
    AppearanceSettings settings;
    settings.set(Setting::ColorScheme, value);
    return settings.colorScheme();
}

bool isAnimated(Setting setting, const QVariant &value)
{
    AppearanceSettings settings;
    settings.set(setting, value);
    return settings.hasAnimations();
}

TEST(AppearanceSettingsTest, OneIsDarkTwoIsLightAndTheRestNoPreference)
{
    EXPECT_EQ(schemeFor(1U), Scheme::Dark);
    EXPECT_EQ(schemeFor(2U), Scheme::Light);
    EXPECT_EQ(schemeFor(0U), std::nullopt);
    EXPECT_EQ(schemeFor(3U), std::nullopt);
    EXPECT_EQ(schemeFor(QVariant()), std::nullopt);
}

TEST(AppearanceSettingsTest, AnyIntegerWillDoForTheColorScheme)
{
    EXPECT_EQ(schemeFor(1), Scheme::Dark);
    EXPECT_EQ(schemeFor(QVariant::fromValue<uchar>(1)), Scheme::Dark);
    EXPECT_EQ(schemeFor(QVariant::fromValue<short>(2)), Scheme::Light);
    EXPECT_EQ(schemeFor(QVariant::fromValue<qulonglong>(2)), Scheme::Light);
    EXPECT_EQ(schemeFor(-1), std::nullopt);
}

TEST(AppearanceSettingsTest, OtherTypesSayNothingAboutTheColorScheme)
{
    EXPECT_EQ(schemeFor(QStringLiteral("1")), std::nullopt);
    EXPECT_EQ(schemeFor(true), std::nullopt);
    EXPECT_EQ(schemeFor(1.0), std::nullopt);
    EXPECT_EQ(schemeFor(QVariantList{1U}), std::nullopt);
}

TEST(AppearanceSettingsTest, ThingsMoveUnlessASettingSaysOtherwise)
{
    EXPECT_TRUE(AppearanceSettings().hasAnimations());
    EXPECT_FALSE(isAnimated(Setting::ReducedMotion, 1U));
    EXPECT_TRUE(isAnimated(Setting::ReducedMotion, 0U));
    EXPECT_TRUE(isAnimated(Setting::ReducedMotion, 2U));
    EXPECT_FALSE(isAnimated(Setting::EnableAnimations, false));
    EXPECT_TRUE(isAnimated(Setting::EnableAnimations, true));
    EXPECT_FALSE(isAnimated(Setting::AnimationDurationFactor, QStringLiteral("0")));
    EXPECT_FALSE(isAnimated(Setting::AnimationDurationFactor, QStringLiteral("0.0")));
    EXPECT_FALSE(isAnimated(Setting::AnimationDurationFactor, 0.0));
    EXPECT_FALSE(isAnimated(Setting::AnimationDurationFactor, 0));
    EXPECT_TRUE(isAnimated(Setting::AnimationDurationFactor, QStringLiteral("0.5")));
    EXPECT_TRUE(isAnimated(Setting::AnimationDurationFactor, 1.0));
}

TEST(AppearanceSettingsTest, OtherTypesSayNothingAboutAnimations)
{
    EXPECT_TRUE(isAnimated(Setting::ReducedMotion, true));
    EXPECT_TRUE(isAnimated(Setting::ReducedMotion, QStringLiteral("1")));
    EXPECT_TRUE(isAnimated(Setting::EnableAnimations, 0U));
    EXPECT_TRUE(isAnimated(Setting::EnableAnimations, QStringLiteral("false")));
    EXPECT_TRUE(isAnimated(Setting::AnimationDurationFactor, QStringLiteral("none")));
    EXPECT_TRUE(isAnimated(Setting::AnimationDurationFactor, QString()));
    EXPECT_TRUE(isAnimated(Setting::AnimationDurationFactor, false));
}

TEST(AppearanceSettingsTest, OneSettingAgainstAnimationsIsEnough)
{
    AppearanceSettings settings;
    settings.set(Setting::EnableAnimations, true);
    settings.set(Setting::AnimationDurationFactor, QStringLiteral("0"));
    EXPECT_FALSE(settings.hasAnimations());
    settings.clear();
    EXPECT_TRUE(settings.hasAnimations());
}

TEST(AppearanceSettingsTest, TheSettingsAreKnownByTheirNames)
{
    const QString appearance = QStringLiteral("org.freedesktop.appearance");
    const auto setting = [](const QString &nameSpace, const char *key) {
        return AppearanceSettings::settingOf({nameSpace, QString::fromLatin1(key)});
    };
    EXPECT_EQ(setting(appearance, "color-scheme"), Setting::ColorScheme);
    EXPECT_EQ(setting(appearance, "reduced-motion"), Setting::ReducedMotion);
    EXPECT_EQ(setting(QStringLiteral("org.gnome.desktop.interface"), "enable-animations"),
        Setting::EnableAnimations);
    EXPECT_EQ(setting(QStringLiteral("org.kde.kdeglobals.KDE"), "AnimationDurationFactor"),
        Setting::AnimationDurationFactor);
    EXPECT_EQ(setting(appearance, "enable-animations"), std::nullopt);
    EXPECT_EQ(setting(QStringLiteral("org.gnome.desktop.interface"), "color-scheme"), std::nullopt);
}

} // namespace

#include "ui/style/ThemeDriver.h"
#include "fakes/FakeAppearance.h"
#include "ui/settings/SettingsModule.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <gtest/gtest.h>

#include <memory>

namespace
{

constexpr auto Onlooker = R"(
import QtQuick
import Larkspool.Style
QtObject {
    readonly property bool isDark: Theme.isDark
    readonly property bool animated: Theme.animated
    readonly property color panel: Theme.panel
}
)";

class DrivenTheme : public ::testing::Test
{
protected:
    DrivenTheme()
    {
        registerSettingsModule();
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    }

    std::unique_ptr<QObject> onlooker()
    {
        QQmlComponent component(&m_engine);
        component.setData(Onlooker, QUrl());
        std::unique_ptr<QObject> made(component.create());
        EXPECT_TRUE(made) << component.errorString().toStdString();
        return made;
    }

    QQmlEngine m_engine;
    FakeAppearance m_appearance;
};

class DrivenThemeOf : public DrivenTheme, public ::testing::WithParamInterface<Appearance::ColorScheme>
{
};

TEST_P(DrivenThemeOf, IsTheDesktopsFromTheBeginning)
{
    m_appearance.scheme = GetParam();
    const ThemeDriver driver(m_engine, m_appearance);
    const auto seen = onlooker();
    EXPECT_EQ(seen->property("isDark").toBool(), GetParam() == Appearance::ColorScheme::Dark);
    EXPECT_TRUE(seen->property("animated").toBool());
}

INSTANTIATE_TEST_SUITE_P(
    Both, DrivenThemeOf, ::testing::Values(Appearance::ColorScheme::Light, Appearance::ColorScheme::Dark));

TEST_F(DrivenTheme, FollowsTheDesktop)
{
    const ThemeDriver driver(m_engine, m_appearance);
    const auto seen = onlooker();
    const auto light = seen->property("panel");
    m_appearance.scheme = Appearance::ColorScheme::Dark;
    m_appearance.isAnimated = false;
    m_appearance.onChanged();
    EXPECT_TRUE(seen->property("isDark").toBool());
    EXPECT_FALSE(seen->property("animated").toBool());
    EXPECT_NE(seen->property("panel"), light);
}

TEST_F(DrivenTheme, IsLeftAloneWhenTheDriverHasGone)
{
    {
        const ThemeDriver driver(m_engine, m_appearance);
    }
    EXPECT_FALSE(m_appearance.onChanged);
}

} // namespace

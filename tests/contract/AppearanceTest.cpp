#include "contract/TestSettingsPortal.h"
#include "fakes/ManualMainQueue.h"
#include "platform/linux/DesktopAppearance.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

using Scheme = Appearance::ColorScheme;
using Setting = TestSettingsPortal::Setting;
using Version = TestSettingsPortal::Version;

constexpr uint NoPreference = 0;
constexpr uint Dark = 1;
constexpr uint Light = 2;

/// The toolkit's palette, as it was before when it is gone.
class Palette
{
public:
    explicit Palette(const QColor &window) { set(window); }
    ~Palette() { QGuiApplication::setPalette(m_before); }
    Palette(const Palette &) = delete;
    Palette &operator=(const Palette &) = delete;

    static void set(const QColor &window)
    {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        QGuiApplication::setPalette(palette);
    }

private:
    QPalette m_before = QGuiApplication::palette();
};

/// A desktop with a bus of its own. Its portals answer from this thread's event loop: whoever waited for them
/// in a call would wait in vain.
class AppearanceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!m_bus.isRunning() && !qEnvironmentVariableIsSet("CI"))
            GTEST_SKIP() << "dbus-daemon is not installed";
        ASSERT_TRUE(m_bus.isRunning());
        m_connection = BusConnection::open(m_bus.address());
        ASSERT_TRUE(m_connection);
    }

    MessageBus &bus() { return m_bus; }
    ManualMainQueue &queue() { return m_queue; }

    std::unique_ptr<Appearance> appearance(const QDBusConnection &connection)
    {
        auto made = std::make_unique<DesktopAppearance>(connection, m_queue);
        made->onChanged = [this, look = made.get()] {
            m_changes.push_back({look->colorScheme(), look->hasAnimations()});
        };
        return made;
    }
    std::unique_ptr<Appearance> appearance() { return appearance(m_connection->get()); }

    /// One that has not started yet.
    std::unique_ptr<TestSettingsPortal> newPortal(Version version = Version::First) const
    {
        return std::make_unique<TestSettingsPortal>(m_bus.address(), version);
    }
    std::unique_ptr<TestSettingsPortal> portal(Setting setting, const QVariant &value) const
    {
        auto made = newPortal();
        made->set(setting, value);
        made->start();
        return made;
    }

    /// Waits until what the portal has sent so far has been heard: all of it comes before the news that is
    /// sent last.
    void hearAll(const Appearance &look, TestSettingsPortal &portal)
    {
        portal.change(Setting::EnableAnimations, false);
        EXPECT_TRUE(waitUntil([&] { return !look.hasAnimations(); }));
        portal.change(Setting::EnableAnimations, true);
        EXPECT_TRUE(waitUntil([&] { return look.hasAnimations(); }));
    }

    static bool becomes(const Appearance &look, Scheme scheme)
    {
        return waitUntil([&] { return look.colorScheme() == scheme; });
    }
    static bool isAskedAll(const TestSettingsPortal &portal)
    {
        return waitUntil([&] { return portal.questionCount() >= AppearanceSettings::SettingCount; });
    }

    struct Look {
        Scheme scheme;
        bool hasAnimations;
        bool operator==(const Look &other) const = default;
    };
    /// What the appearance was each time that it has told of a change.
    std::vector<Look> &changes() { return m_changes; }

private:
    MessageBus m_bus;
    std::unique_ptr<BusConnection> m_connection;
    ManualMainQueue m_queue;
    std::vector<Look> m_changes;
};

TEST_F(AppearanceTest, ADarkDesktopIsDark)
{
    const auto desktop = portal(Setting::ColorScheme, Dark);
    const auto look = appearance();
    EXPECT_EQ(look->colorScheme(), Scheme::Light) << "the palette, before the portal's answer";
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
    EXPECT_TRUE(look->hasAnimations());
    EXPECT_EQ(changes(), (std::vector<Look>{{Scheme::Dark, true}}));
}

TEST_F(AppearanceTest, ALightDesktopIsLightWhateverThePaletteIs)
{
    const Palette palette(Qt::black);
    const auto desktop = portal(Setting::ColorScheme, Light);
    const auto look = appearance();
    EXPECT_EQ(look->colorScheme(), Scheme::Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Light));
    Palette::set(Qt::darkBlue);
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
    EXPECT_EQ(changes().size(), 1U);
}

TEST_F(AppearanceTest, APortalThatReadsTheNewWayOnlyIsUnderstood)
{
    const auto desktop = newPortal(Version::WithoutRead);
    desktop->set(Setting::ColorScheme, Dark);
    desktop->start();
    EXPECT_TRUE(becomes(*appearance(), Scheme::Dark));
}

TEST_F(AppearanceTest, ChangesAreFollowedAtOnce)
{
    const auto desktop = portal(Setting::ColorScheme, Light);
    const auto look = appearance();
    hearAll(*look, *desktop);
    changes().clear();
    desktop->change(Setting::ColorScheme, Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
    desktop->change(Setting::ColorScheme, Light);
    EXPECT_TRUE(becomes(*look, Scheme::Light));
    EXPECT_EQ(changes(), (std::vector<Look>{{Scheme::Dark, true}, {Scheme::Light, true}}));
}

TEST_F(AppearanceTest, WithoutAPreferenceItIsThePalettes)
{
    const Palette palette(Qt::black);
    const auto desktop = portal(Setting::ColorScheme, NoPreference);
    const auto look = appearance();
    hearAll(*look, *desktop);
    EXPECT_EQ(look->colorScheme(), Scheme::Dark);
    desktop->change(Setting::ColorScheme, Light);
    EXPECT_TRUE(becomes(*look, Scheme::Light));
    desktop->change(Setting::ColorScheme, NoPreference);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
}

TEST_F(AppearanceTest, WithoutAPortalThePaletteIsFollowed)
{
    const auto look = appearance();
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
    EXPECT_TRUE(look->hasAnimations());
    const Palette palette(QColor(40, 40, 40));
    EXPECT_EQ(look->colorScheme(), Scheme::Dark);
    Palette::set(QColor(200, 200, 200));
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
    EXPECT_EQ(changes(), (std::vector<Look>{{Scheme::Dark, true}, {Scheme::Light, true}}));
}

TEST_F(AppearanceTest, WithoutABusThePaletteIsFollowed)
{
    const auto look = appearance(QDBusConnection(QString()));
    queue().drain();
    const Palette palette(Qt::black);
    EXPECT_EQ(look->colorScheme(), Scheme::Dark);
    EXPECT_TRUE(look->hasAnimations());
}

TEST_F(AppearanceTest, APortalThatComesLaterCounts)
{
    const auto look = appearance();
    const auto desktop = portal(Setting::ColorScheme, Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
    desktop->change(Setting::ColorScheme, Light);
    EXPECT_TRUE(becomes(*look, Scheme::Light));
}

TEST_F(AppearanceTest, APortalThatGoesTakesItsSettingsWithIt)
{
    auto desktop = portal(Setting::ColorScheme, Dark);
    desktop->set(Setting::EnableAnimations, false);
    const auto look = appearance();
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
    EXPECT_TRUE(waitUntil([&] { return !look->hasAnimations(); }));
    desktop.reset();
    EXPECT_TRUE(becomes(*look, Scheme::Light));
    EXPECT_TRUE(look->hasAnimations());
    desktop = portal(Setting::ColorScheme, Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
}

TEST_F(AppearanceTest, ThePortalThatHasTheNameIsTheOneThatCounts)
{
    const auto first = portal(Setting::ColorScheme, Dark);
    const auto look = appearance();
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
    const auto second = portal(Setting::ColorScheme, Light);
    EXPECT_TRUE(becomes(*look, Scheme::Light));
    first->change(Setting::ColorScheme, Dark);
    first->flush();
    hearAll(*look, *second);
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
}

TEST_F(AppearanceTest, NobodyElseSpeaksForThePortal)
{
    const auto desktop = portal(Setting::ColorScheme, Light);
    const auto look = appearance();
    hearAll(*look, *desktop);
    const auto other = newPortal();
    other->change(Setting::ColorScheme, Dark);
    other->flush();
    hearAll(*look, *desktop);
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
}

TEST_F(AppearanceTest, OtherSettingsAreNoChange)
{
    const auto desktop = portal(Setting::ColorScheme, Dark);
    const auto look = appearance();
    hearAll(*look, *desktop);
    changes().clear();
    desktop->tell(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast"), 1U);
    desktop->tell(QStringLiteral("org.example"), QStringLiteral("color-scheme"), Light);
    desktop->change(Setting::ColorScheme, Dark);
    hearAll(*look, *desktop);
    EXPECT_EQ(changes(), (std::vector<Look>{{Scheme::Dark, false}, {Scheme::Dark, true}}));
}

TEST_F(AppearanceTest, ValuesOfWrongTypesSayNothing)
{
    const Palette palette(Qt::black);
    for (const QVariant &wrong : {QVariant(QStringLiteral("2")), QVariant(QStringList{QStringLiteral("2")}),
             QVariant(QVariantMap{{QStringLiteral("value"), Light}}), QVariant(2.0), QVariant(99U)}) {
        const auto desktop = portal(Setting::ColorScheme, wrong);
        desktop->set(Setting::AnimationDurationFactor, QStringList{QStringLiteral("0")});
        const auto look = appearance();
        hearAll(*look, *desktop);
        EXPECT_EQ(look->colorScheme(), Scheme::Dark) << wrong.typeName();
        desktop->change(Setting::ColorScheme, Light);
        EXPECT_TRUE(becomes(*look, Scheme::Light));
        desktop->change(Setting::ColorScheme, wrong);
        EXPECT_TRUE(becomes(*look, Scheme::Dark)) << wrong.typeName();
    }
}

TEST_F(AppearanceTest, AnswersWithoutAValueSayNothing)
{
    const auto desktop = portal(Setting::ColorScheme, Dark);
    desktop->hasEmptyAnswers = true;
    const auto look = appearance();
    ASSERT_TRUE(isAskedAll(*desktop));
    hearAll(*look, *desktop);
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
}

TEST_F(AppearanceTest, APortalThatNeverAnswersIsNotWaitedFor)
{
    auto desktop = portal(Setting::ColorScheme, Dark);
    desktop->isSilent = true;
    const auto look = appearance();
    ASSERT_TRUE(isAskedAll(*desktop));
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
    queue().advanceBy(std::chrono::minutes(1));
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
    EXPECT_TRUE(look->hasAnimations());
    EXPECT_TRUE(changes().empty());
    // It is started anew.
    desktop.reset();
    desktop = portal(Setting::ColorScheme, Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
}

TEST_F(AppearanceTest, APortalThatNeverAnsweredIsForgottenWhenTheNextComes)
{
    const auto silent = portal(Setting::ColorScheme, Light);
    silent->isSilent = true;
    const auto look = appearance();
    ASSERT_TRUE(isAskedAll(*silent));
    const auto desktop = portal(Setting::ColorScheme, Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
    // The deadline of the questions to the one before.
    queue().advanceBy(std::chrono::minutes(1));
    EXPECT_EQ(look->colorScheme(), Scheme::Dark);
}

TEST_F(AppearanceTest, APortalThatAnswersNothingButTellsOfChangesIsHeard)
{
    const auto look = appearance();
    const auto desktop = newPortal();
    desktop->isSilent = true;
    desktop->start();
    ASSERT_TRUE(isAskedAll(*desktop));
    desktop->change(Setting::ColorScheme, Dark);
    EXPECT_TRUE(becomes(*look, Scheme::Dark));
}

TEST_F(AppearanceTest, TheBusIsAskedToStartThePortal)
{
    QTemporaryDir folder;
    const QString sign = folder.filePath(QStringLiteral("started"));
    bus().addService("org.freedesktop.portal.Desktop", "/usr/bin/touch " + sign.toUtf8());
    const auto look = appearance();
    EXPECT_TRUE(waitUntil([&] { return QFile::exists(sign); }));
    EXPECT_EQ(look->colorScheme(), Scheme::Light);
}

TEST_F(AppearanceTest, EachSettingAgainstAnimationsStopsThemAtOnce)
{
    const auto desktop = portal(Setting::ColorScheme, NoPreference);
    const auto look = appearance();
    hearAll(*look, *desktop);
    const std::vector<std::tuple<Setting, QVariant, QVariant>> cases{
        {Setting::EnableAnimations, false, true},
        {Setting::AnimationDurationFactor, QStringLiteral("0"), QStringLiteral("1")},
        {Setting::AnimationDurationFactor, 0.0, 0.5},
        {Setting::ReducedMotion, 1U, 0U},
    };
    for (const auto &[setting, off, on] : cases) {
        desktop->change(setting, off);
        EXPECT_TRUE(waitUntil([&] { return !look->hasAnimations(); }));
        desktop->change(setting, on);
        EXPECT_TRUE(waitUntil([&] { return look->hasAnimations(); }));
    }
}

TEST_F(AppearanceTest, AnimationsThatAreOffAtTheStartAreOff)
{
    const auto desktop = portal(Setting::AnimationDurationFactor, QStringLiteral("0"));
    const auto look = appearance();
    EXPECT_TRUE(waitUntil([&] { return !look->hasAnimations(); }));
    EXPECT_EQ(changes(), (std::vector<Look>{{Scheme::Light, false}}));
}

TEST_F(AppearanceTest, TheEndOfItForgetsWhatWasAsked)
{
    const auto desktop = portal(Setting::ColorScheme, Dark);
    auto look = appearance();
    look.reset();
    ASSERT_TRUE(isAskedAll(*desktop));
    const Palette palette(Qt::black);
    const auto next = appearance();
    desktop->change(Setting::ColorScheme, Light);
    EXPECT_TRUE(becomes(*next, Scheme::Light));
}

} // namespace

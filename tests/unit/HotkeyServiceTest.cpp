#include "services/HotkeyService.h"

#include "fakes/FakeHotKeyCenter.h"

#include <gtest/gtest.h>

namespace
{

class Hotkey : public ::testing::Test
{
protected:
    /// What registering prints.
    std::string registered(const KeyCombo &combo)
    {
        ::testing::internal::CaptureStdout();
        m_service.registerHotkey(combo, [this] { ++m_presses; });
        return ::testing::internal::GetCapturedStdout();
    }

    FakeHotKeyCenter m_center;
    HotkeyService m_service{m_center};
    int m_presses = 0;
};

TEST_F(Hotkey, APressCallsTheHandlerOnce)
{
    EXPECT_EQ(registered(KeyCombo::standard()), "");
    m_center.press(9, 768);
    EXPECT_EQ(m_presses, 1);
    EXPECT_TRUE(m_service.isRegistered());
}

TEST_F(Hotkey, IsRegisteredUnderItsIdentity)
{
    registered(KeyCombo::standard());
    ASSERT_EQ(m_center.ids().size(), 1U);
    EXPECT_EQ(m_center.ids().front().signature, 0x4C524B53U);
    EXPECT_EQ(m_center.ids().front().id, 1U);
}

TEST_F(Hotkey, OtherModifierBitsAreDropped)
{
    registered({9, 0xffffffff});
    EXPECT_EQ(m_center.registered(), (std::set<FakeHotKeyCenter::Combination>{{9, 256 | 512 | 2048 | 4096}}));
}

TEST_F(Hotkey, ABareKeyIsRegistered)
{
    EXPECT_EQ(registered({96, 0}), "");
    EXPECT_EQ(m_center.registered(), (std::set<FakeHotKeyCenter::Combination>{{96, 0}}));
}

TEST_F(Hotkey, TheSameCombinationCanBeRegisteredAgain)
{
    registered(KeyCombo::standard());
    EXPECT_EQ(registered(KeyCombo::standard()), "");
    m_center.press(9, 768);
    EXPECT_EQ(m_presses, 1);
}

TEST_F(Hotkey, ANewCombinationReleasesTheOldOne)
{
    registered(KeyCombo::standard());
    registered({8, 256});
    m_center.press(9, 768);
    EXPECT_EQ(m_presses, 0);
    m_center.press(8, 256);
    EXPECT_EQ(m_presses, 1);
}

TEST_F(Hotkey, ARefusalPrintsTheStatusAndLeavesNoHotKey)
{
    registered(KeyCombo::standard());
    m_center.takeElsewhere(8, 256);
    EXPECT_EQ(registered({8, 256}), "Failed to register hotkey: -9878\n");
    EXPECT_FALSE(m_service.isRegistered());
    EXPECT_TRUE(m_center.registered().empty());
}

TEST_F(Hotkey, ALaterRefusalPrintsTheStatusOnceAndLeavesNoHotKey)
{
    EXPECT_EQ(registered(KeyCombo::standard()), "");
    ::testing::internal::CaptureStdout();
    m_center.refuseLater(-9877);
    m_center.refuseLater(-9877);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Failed to register hotkey: -9877\n");
    EXPECT_FALSE(m_service.isRegistered());
    EXPECT_EQ(registered(KeyCombo::standard()), "");
    m_center.press(9, 768);
    EXPECT_EQ(m_presses, 1);
}

TEST_F(Hotkey, ALaterRefusalOfTheNextHotKeyPrintsItsOwnLine)
{
    registered(KeyCombo::standard());
    ::testing::internal::CaptureStdout();
    m_center.refuseLater(-9878);
    m_service.registerHotkey({8, 256}, [] {});
    m_center.refuseLater(-9877);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
        "Failed to register hotkey: -9878\nFailed to register hotkey: -9877\n");
    EXPECT_FALSE(m_service.isRegistered());
}

TEST_F(Hotkey, WhatIsNotRegisteredCannotBeRefused)
{
    registered(KeyCombo::standard());
    m_service.unregister();
    ::testing::internal::CaptureStdout();
    m_center.callFailureHandler(-9878);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST_F(Hotkey, UnregisteringReleasesIt)
{
    registered(KeyCombo::standard());
    m_service.unregister();
    EXPECT_TRUE(m_center.registered().empty());
    m_center.press(9, 768);
    EXPECT_EQ(m_presses, 0);
}

TEST_F(Hotkey, TheHandlerMayRegisterAnotherHotKey)
{
    m_service.registerHotkey(KeyCombo::standard(), [this] { registered({8, 256}); });
    m_center.press(9, 768);
    m_center.press(8, 256);
    EXPECT_EQ(m_presses, 1);
}

TEST(HotkeyServiceInstance, APressAfterItsEndDoesNothing)
{
    FakeHotKeyCenter center;
    int presses = 0;
    {
        HotkeyService service(center);
        service.registerHotkey(KeyCombo::standard(), [&presses] { ++presses; });
        EXPECT_EQ(HotkeyService::sharedInstance(), &service);
    }
    EXPECT_EQ(HotkeyService::sharedInstance(), nullptr);
    center.press(9, 768);
    EXPECT_EQ(presses, 0);
}

} // namespace

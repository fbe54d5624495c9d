#include "base/NotificationCenter.h"

#include "base/Notifications.h"

#include <gtest/gtest.h>

namespace
{

const QString Name = QStringLiteral("Larkspool.test");

TEST(NotificationCenter, CallsTheObserversOfTheNameInOrder)
{
    NotificationCenter center;
    QString calls;
    const auto a = center.addObserver(Name, [&] { calls += QLatin1Char('a'); });
    const auto other = center.addObserver(QStringLiteral("other"), [&] { calls += QLatin1Char('o'); });
    const auto b = center.addObserver(Name, [&] { calls += QLatin1Char('b'); });
    center.post(Name);
    EXPECT_EQ(calls, QStringLiteral("ab"));
}

TEST(NotificationCenter, AnEndedRegistrationIsNotCalled)
{
    NotificationCenter center;
    int calls = 0;
    auto observer = center.addObserver(Name, [&] { ++calls; });
    observer.reset();
    center.post(Name);
    EXPECT_EQ(calls, 0);
}

TEST(NotificationCenter, AnObserverMayEndRegistrationsWhileItIsCalled)
{
    NotificationCenter center;
    int calls = 0;
    std::unique_ptr<NotificationCenter::Observer> own;
    std::unique_ptr<NotificationCenter::Observer> next;
    own = center.addObserver(Name, [&] {
        ++calls;
        own.reset();
        next.reset();
    });
    next = center.addObserver(Name, [&] { calls += 10; });
    center.post(Name);
    center.post(Name);
    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, ARegistrationMayOutliveTheCenter)
{
    std::unique_ptr<NotificationCenter::Observer> observer;
    {
        NotificationCenter center;
        observer = center.addObserver(Name, [] {});
    }
    observer.reset();
    SUCCEED();
}

TEST(Notifications, HaveTheirNames)
{
    EXPECT_EQ(notification::panelWillShow(), QStringLiteral("Larkspool.panelWillShow"));
    EXPECT_EQ(notification::openSettings(), QStringLiteral("Larkspool.openSettings"));
    EXPECT_EQ(notification::reloadHotkey(), QStringLiteral("Larkspool.reloadHotkey"));
    EXPECT_EQ(notification::clearAllHistory(), QStringLiteral("Larkspool.clearAllHistory"));
}

} // namespace

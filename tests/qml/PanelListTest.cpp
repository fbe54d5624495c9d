#include "PanelScene.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

/// Where the list puts its cards, in the whole panel.
namespace
{

constexpr int EntryCount = 30;
constexpr int HeadHeight = 81;

class PanelList : public PanelScene
{
protected:
    PanelList()
    {
        setAppearance(Appearance::ColorScheme::Dark);
        addDefaults();
        for (int number = EntryCount - 1; number >= 0; --number)
            addText(QByteArray("Entry ") + QByteArray::number(number));
        show();
    }

    QRectF card(int number) const { return cardOf(QStringLiteral("Entry %1").arg(number)); }
    /// Moves the highlight there and lets the list follow; whether all of the card, its border included,
    /// comes into sight below the panel's head.
    bool highlight(int number)
    {
        view().setSelectedIndex(number);
        passTime();
        const QRectF listArea(0, HeadHeight, 680, 640 - HeadHeight);
        return waitUntil(
            [&] { return listArea.contains(card(number).adjusted(0, -2, 0, 2)); }, std::chrono::seconds(2));
    }
};

TEST_F(PanelList, KeepsTheHighlightedCardWhollyInSight)
{
    QList<int> way;
    for (int number = 0; number < EntryCount; ++number)
        way.append(number);
    for (int number = EntryCount - 1; number >= 0; number -= 3)
        way.append(number);
    way << 0 << EntryCount - 1 << 12;
    for (const int number : way) {
        EXPECT_TRUE(highlight(number)) << number;
    }
}

TEST_F(PanelList, LeavesMoreRoomAroundTheHighlightedCardThanBetweenOthers)
{
    for (const int number : {0, 1, 2, 12, EntryCount - 1}) {
        ASSERT_TRUE(highlight(number)) << number;
        const QRectF highlighted = card(number);
        EXPECT_NEAR(highlighted.height(), 130 * 1.06, 0.01);
        if (number > 0) {
            EXPECT_NEAR(highlighted.top() - card(number - 1).bottom(), 20, 1) << number;
        }
        if (number > 0 && number < EntryCount - 1) {
            EXPECT_NEAR(card(number + 1).top() - highlighted.bottom(), 20, 1) << number;
        }
    }
    ASSERT_TRUE(highlight(0));
    EXPECT_NEAR(card(1).top() - card(0).bottom(), 20, 1);
    EXPECT_NEAR(card(2).top() - card(1).bottom(), 13.5, 1);
    EXPECT_NEAR(card(3).top() - card(2).bottom(), 13.5, 1);
}

TEST_F(PanelList, ShowsNoGapWhereARowIsMovedIntoSight)
{
    ASSERT_TRUE(highlight(EntryCount - 1));
    // From the lowest card up to the head, one follows the other.
    QRectF below = card(EntryCount - 1);
    for (int number = EntryCount - 2; below.top() > HeadHeight + 20; --number) {
        const QRectF next = card(number);
        ASSERT_FALSE(next.isEmpty()) << number;
        EXPECT_GT(below.top() - next.bottom(), 8) << number;
        EXPECT_LT(below.top() - next.bottom(), 22) << number;
        below = next;
    }
}

} // namespace

#pragma once

#include "PictureScene.h"
#include "PictureTest.h"

#include <algorithm>

/// A scene in one of its states, once from left to right and once from right to left.
template<class Scene>
class MirroringTest : public ::testing::TestWithParam<PictureState<Scene>>
{
protected:
    /// Everything in it is where it is seen in a mirror; but for the rounding of a middle
    /// between two pixels.
    void expectMirrored()
    {
        const Seen straight = seen(Qt::LeftToRight);
        const Seen mirrored = seen(Qt::RightToLeft);
        ASSERT_GT(straight.drawn.size(), 0U);
        ASSERT_EQ(mirrored.drawn.size(), straight.drawn.size());
        for (size_t i = 0; i < straight.drawn.size(); ++i) {
            const auto &[what, place] = straight.drawn[i];
            const QRectF &found = mirrored.drawn[i].place;
            EXPECT_EQ(mirrored.drawn[i].what, pointingTheOtherWay(what)) << describe(what, place);
            EXPECT_NEAR(found.left(), straight.width - place.right(), Tolerance) << describe(what, place);
            EXPECT_NEAR(found.right(), straight.width - place.left(), Tolerance) << describe(what, place);
            EXPECT_NEAR(found.top(), place.top(), Tolerance) << describe(what, place);
            EXPECT_NEAR(found.bottom(), place.bottom(), Tolerance) << describe(what, place);
        }
    }

private:
    static constexpr double Tolerance = 1.5;

    struct Seen {
        std::vector<PictureScene::Drawn> drawn;
        qreal width = 0;
    };

    /// GoogleTest's fixture is the scene; here two of them are shown in one test.
    class Shown : public Scene
    {
    public:
        Seen drawnIn(const PictureState<Scene> &state, Qt::LayoutDirection direction)
        {
            this->setAppearance(Appearance::ColorScheme::Light);
            state.prepare(*this);
            this->setLayoutDirection(direction);
            this->show();
            if (::testing::Test::HasFatalFailure())
                return {};
            state.arrive(*this);
            this->passTime();
            // By then everything is in its place.
            (void)this->picture();
            return {this->drawn(), this->width()};
        }

    private:
        void TestBody() override {}
    };

    Seen seen(Qt::LayoutDirection direction) const { return Shown().drawnIn(this->GetParam(), direction); }

    /// The sign of a submenu is another in a mirror.
    static QString pointingTheOtherWay(const QString &what)
    {
        return what == QStringLiteral("QQuickText ›") ? QStringLiteral("QQuickText ‹") : what;
    }

    static std::string describe(const QString &what, const QRectF &place)
    {
        return what.toStdString() + " from " + std::to_string(place.left()) + " to " +
            std::to_string(place.right()) + ", " + std::to_string(place.top());
    }
};

template<class Scene>
std::string stateName(const ::testing::TestParamInfo<PictureState<Scene>> &test)
{
    std::string name = test.param.name;
    std::ranges::replace(name, '-', '_');
    return name;
}

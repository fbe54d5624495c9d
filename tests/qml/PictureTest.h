#pragma once

#include "PictureReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <tuple>

/// At which scales a state is drawn.
enum class Scales { One, Both };

/// Something that a scene can show.
template<class Scene>
struct PictureState {
    const char *name;
    Scales scales;
    void (*prepare)(Scene &);
    /// Once it is shown.
    void (*arrive)(Scene &);

    /// GoogleTest's own would show its bytes.
    friend void PrintTo(const PictureState &state, std::ostream *stream) { *stream << state.name; }
};

template<class Scene>
using PictureParameter = std::tuple<PictureState<Scene>, Appearance::ColorScheme>;

/// A scene in one of its states and one appearance, compared with its picture. The scene can setAppearance(),
/// show() and passTime(). A process has one scale: this runs once for each. See scripts/pictures.
template<class Scene>
class PictureTest : public Scene, public ::testing::WithParamInterface<PictureParameter<Scene>>
{
protected:
    void compareWith(const QString &folder)
    {
        const auto &[state, scheme] = this->GetParam();
        if (state.scales == Scales::One && pictures::scaleName() != QStringLiteral("1"))
            GTEST_SKIP() << "drawn at one scale only";
        this->setAppearance(scheme);
        state.prepare(*this);
        ASSERT_NO_FATAL_FAILURE(this->show());
        state.arrive(*this);
        this->passTime();
        pictures::expectAsReference(this->picture(), folder, QString::fromLatin1(state.name), scheme);
    }
};

inline auto bothAppearances()
{
    return ::testing::Values(Appearance::ColorScheme::Dark, Appearance::ColorScheme::Light);
}

template<class Scene>
std::string pictureName(const ::testing::TestParamInfo<PictureParameter<Scene>> &test)
{
    const bool isDark = std::get<Appearance::ColorScheme>(test.param) == Appearance::ColorScheme::Dark;
    std::string name = std::string(std::get<0>(test.param).name) + (isDark ? "_dark" : "_light");
    std::ranges::replace(name, '-', '_');
    return name;
}

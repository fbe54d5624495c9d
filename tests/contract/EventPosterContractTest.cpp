#include "fakes/FakeEventPoster.h"
#include "fakes/FakeWorkspace.h"
#include "platform/wayland/WaylandBackends.h"
#include "platform/x11/X11Backends.h"
#include "support/Compositor.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

constexpr quint16 V = 9;

/// A desktop that takes keys from this program.
class EventPosterWorld
{
public:
    virtual ~EventPosterWorld() = default;
    virtual EventPoster &poster() = 0;
};

struct EventPosterBackend {
    const char *name;
    std::function<std::unique_ptr<EventPosterWorld>()> makeWorld;
};

class FakeWorld : public EventPosterWorld
{
public:
    EventPoster &poster() override { return m_poster; }

private:
    FakeEventPoster m_poster;
};

class X11World : public EventPosterWorld
{
public:
    EventPoster &poster() override { return *m_poster; }

private:
    XServer m_server;
    FakeWorkspace m_workspace;
    EventLoopQueue m_queue;
    std::unique_ptr<EventPoster> m_poster = platform::makeX11EventPoster(m_queue, m_workspace);
};

template<Compositor::Kind kind>
class WaylandWorld : public EventPosterWorld
{
public:
    EventPoster &poster() override { return *m_poster; }

private:
    Compositor m_compositor{kind};
    FakeWorkspace m_workspace;
    EventLoopQueue m_queue;
    std::unique_ptr<EventPoster> m_poster = platform::makeWaylandEventPoster(m_queue, m_workspace);
};

const EventPosterBackend Backends[] = {
    {"Fake", [] { return std::make_unique<FakeWorld>(); }},
    {"X11", [] { return std::make_unique<X11World>(); }},
    {"Sway", [] { return std::make_unique<WaylandWorld<Compositor::Kind::Sway>>(); }},
    {"KWin", [] { return std::make_unique<WaylandWorld<Compositor::Kind::KWin>>(); }},
};

class EventPosterContract : public ::testing::TestWithParam<EventPosterBackend>
{
protected:
    EventPosterContract()
        : m_world(GetParam().makeWorld())
    {
    }
    EventPoster &poster() { return m_world->poster(); }

private:
    std::unique_ptr<EventPosterWorld> m_world;
};

TEST_P(EventPosterContract, TheProcessIsTrustedWhereEventsArrive)
{
    EXPECT_TRUE(poster().isProcessTrusted());
    EXPECT_TRUE(poster().isProcessTrustedWithPrompt());
}

TEST_P(EventPosterContract, AnEventHasItsKeyAndMotionAndNoFlags)
{
    const auto source = poster().createEventSource(0);
    for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up}) {
        const auto event = poster().createKeyboardEvent(source.get(), V, motion);
        ASSERT_NE(event, nullptr);
        EXPECT_EQ(event->keyCode, V);
        EXPECT_EQ(event->motion, motion);
        EXPECT_EQ(event->flags, 0U);
    }
}

TEST_P(EventPosterContract, AnEventCanBeMadeWithoutASource)
{
    EXPECT_NE(poster().createKeyboardEvent(nullptr, V, KeyMotion::Down), nullptr);
}

TEST_P(EventPosterContract, ThereIsNoEventForACodeOfNoKey)
{
    EXPECT_EQ(poster().createKeyboardEvent(nullptr, 9999, KeyMotion::Down), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Backends, EventPosterContract, ::testing::ValuesIn(Backends),
    [](const auto &backend) { return std::string(backend.param.name); });

} // namespace

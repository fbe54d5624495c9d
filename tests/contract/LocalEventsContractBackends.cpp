#include "contract/ApplicationWindow.h"

#include "fakes/FakeLocalEvents.h"

namespace
{

class FakeWorld : public LocalEventsWorld
{
public:
    LocalEvents &events() override { return *m_events; }
    void endEvents() override { m_events.reset(); }

    LocalEventFate press(const LocalKeyEvent &key) override
    {
        return m_events ? m_events->press(key.keyCode, key.modifiers, key.characters)
                        : LocalEventFate::PassedOn;
    }
    LocalEventFate scroll(const LocalScrollEvent &turn) override
    {
        return m_events ? m_events->scroll(turn.scrollingDeltaY, turn.hasPreciseScrollingDeltas)
                        : LocalEventFate::PassedOn;
    }

private:
    std::unique_ptr<FakeLocalEvents> m_events = std::make_unique<FakeLocalEvents>();
};

template<class World>
std::unique_ptr<LocalEventsWorld> make()
{
    return std::make_unique<World>();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Backends, LocalEventsContract,
    ::testing::Values(LocalEventsBackend{"Fake", make<FakeWorld>},
        LocalEventsBackend{"Application", make<ApplicationWindow>}),
    [](const auto &backend) { return backend.param.name; });

#include "fakes/FakeLocalEvents.h"

#include <algorithm>

/// The monitors of one kind of event, in the order in which they were added.
template<class Event>
class FakeLocalEvents::Monitors : public std::enable_shared_from_this<Monitors<Event>>
{
public:
    using Handler = std::function<LocalEventFate(const Event &)>;

    std::unique_ptr<Monitor> add(Handler handler)
    {
        auto registered = std::make_shared<Handler>(std::move(handler));
        m_handlers.push_back(registered);
        return std::make_unique<Registration>(this->weak_from_this(), std::move(registered));
    }

    LocalEventFate tell(const Event &event) const
    {
        // A copy, since handlers add and end monitors; it also keeps the one that is running.
        for (const auto &handler : std::vector(m_handlers)) {
            if (std::ranges::find(m_handlers, handler) == m_handlers.end())
                continue;
            if ((*handler)(event) == LocalEventFate::Consumed)
                return LocalEventFate::Consumed;
        }
        return LocalEventFate::PassedOn;
    }

    qsizetype count() const { return std::ssize(m_handlers); }

private:
    class Registration : public Monitor
    {
    public:
        Registration(std::weak_ptr<Monitors> monitors, std::shared_ptr<Handler> handler)
            : m_monitors(std::move(monitors))
            , m_handler(std::move(handler))
        {
        }
        ~Registration() override
        {
            if (const auto monitors = m_monitors.lock())
                std::erase(monitors->m_handlers, m_handler);
        }
        Registration(const Registration &) = delete;
        Registration &operator=(const Registration &) = delete;

    private:
        std::weak_ptr<Monitors> m_monitors;
        std::shared_ptr<Handler> m_handler;
    };

    std::vector<std::shared_ptr<Handler>> m_handlers;
};

FakeLocalEvents::FakeLocalEvents()
    : m_keyDown(std::make_shared<Monitors<LocalKeyEvent>>())
    , m_scroll(std::make_shared<Monitors<LocalScrollEvent>>())
{
}

FakeLocalEvents::~FakeLocalEvents() = default;

LocalEventFate FakeLocalEvents::press(quint16 keyCode, EventModifier modifiers, const QString &characters)
{
    return press(LocalKeyEvent{.keyCode = keyCode, .modifiers = modifiers, .characters = characters});
}

LocalEventFate FakeLocalEvents::press(const LocalKeyEvent &event)
{
    return m_keyDown->tell(event);
}

LocalEventFate FakeLocalEvents::scroll(double deltaY, bool isPrecise)
{
    return m_scroll->tell({deltaY, isPrecise});
}

qsizetype FakeLocalEvents::keyDownMonitorCount() const
{
    return m_keyDown->count();
}

qsizetype FakeLocalEvents::scrollMonitorCount() const
{
    return m_scroll->count();
}

std::unique_ptr<LocalEvents::Monitor> FakeLocalEvents::addKeyDownMonitor(KeyHandler handler)
{
    return m_keyDown->add(std::move(handler));
}

std::unique_ptr<LocalEvents::Monitor> FakeLocalEvents::addScrollMonitor(ScrollHandler handler)
{
    return m_scroll->add(std::move(handler));
}

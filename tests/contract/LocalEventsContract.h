#pragma once

#include "platform/LocalEvents.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

/// A program with a window, and a user before it, whatever they are made of.
class LocalEventsWorld
{
public:
    virtual ~LocalEventsWorld() = default;

    virtual LocalEvents &events() = 0;
    /// The source of the events goes; the window stays.
    virtual void endEvents() = 0;
    /// The user presses a key of the window; whether the window got it.
    virtual LocalEventFate press(const LocalKeyEvent &key) = 0;
    /// The user turns a wheel, or moves fingers, over the window; whether the window got it.
    virtual LocalEventFate scroll(const LocalScrollEvent &turn) = 0;
};

/// A back end that must keep the port's contract.
struct LocalEventsBackend {
    std::string name;
    std::function<std::unique_ptr<LocalEventsWorld>()> makeWorld;
};

/// A test's name holds its parameter.
void PrintTo(const LocalEventsBackend &backend, std::ostream *stream);

class LocalEventsContract : public ::testing::TestWithParam<LocalEventsBackend>
{
protected:
    LocalEventsContract()
        : m_world(GetParam().makeWorld())
    {
    }

    LocalEventsWorld &world() { return *m_world; }
    LocalEvents &events() { return m_world->events(); }
    /// Whether the monitors let a press of the key pass.
    bool reachesTheWindow(quint16 keyCode)
    {
        return world().press({keyCode, EventModifier::None, QString()}) == LocalEventFate::PassedOn;
    }

private:
    std::unique_ptr<LocalEventsWorld> m_world;
};

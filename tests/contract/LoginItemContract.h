#pragma once

#include "platform/LoginItem.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A login item and the desktop that it speaks to, whatever they are made of.
class LoginItemWorld
{
public:
    virtual ~LoginItemWorld() = default;

    /// Whether all that it needs is installed.
    virtual bool isUsable() const { return true; }
    virtual LoginItem &item() = 0;
    virtual void endItem() = 0;
    /// Whether the desktop would start the program at login.
    virtual bool isRegistered() = 0;
    /// From now on the desktop takes no registrations, or takes them again.
    virtual void refuse() = 0;
    virtual void allow() = 0;
    /// Waits for what the item and the desktop have sent each other so far.
    virtual void catchUp() = 0;
};

/// A back end that must keep the port's contract.
struct LoginItemBackend {
    std::string name;
    std::function<std::unique_ptr<LoginItemWorld>()> makeWorld;
};

/// A test's name holds its parameter.
void PrintTo(const LoginItemBackend &backend, std::ostream *stream);

class LoginItemContract : public ::testing::TestWithParam<LoginItemBackend>
{
protected:
    void SetUp() override;

    LoginItemWorld &world() { return *m_world; }
    LoginItem &item() { return m_world->item(); }

    /// Waits for the outcome; nothing when there is none. A failure is its reason, success is empty.
    std::optional<std::string> registerItem();
    std::optional<std::string> unregisterItem();
    bool waitFor(const std::function<bool()> &condition);

private:
    std::unique_ptr<LoginItemWorld> m_world;
};

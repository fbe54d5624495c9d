#pragma once

#include <QString>

#include <functional>
#include <map>
#include <memory>

/// Application-wide notifications: a name, no object, no information. Main thread only.
class NotificationCenter
{
public:
    /// A registration; destroying it ends it. It may outlive the centre.
    class Observer
    {
    public:
        virtual ~Observer() = default;
    };

    NotificationCenter();
    ~NotificationCenter();

    /// Calls every observer of the name, in the order of registration. Observers may register, end
    /// registrations and post from within a call; one registered during a post is not called by it.
    void post(const QString &name);

    [[nodiscard]] std::unique_ptr<Observer> addObserver(const QString &name, std::function<void()> block);

private:
    struct Entries;
    class Registration;
    std::shared_ptr<Entries> m_entries;
};

#include "base/NotificationCenter.h"

#include <vector>

struct NotificationCenter::Entries {
    struct Entry {
        QString name;
        std::function<void()> block;
    };
    // Keyed by a rising number: the order of registration.
    std::map<quint64, Entry> entries;
    quint64 nextKey = 0;
};

class NotificationCenter::Registration : public NotificationCenter::Observer
{
public:
    Registration(const std::shared_ptr<Entries> &entries, quint64 key)
        : m_entries(entries)
        , m_key(key)
    {
    }
    ~Registration() override
    {
        if (const auto entries = m_entries.lock())
            entries->entries.erase(m_key);
    }
    Registration(const Registration &) = delete;
    Registration &operator=(const Registration &) = delete;

private:
    std::weak_ptr<Entries> m_entries;
    quint64 m_key;
};

NotificationCenter::NotificationCenter()
    : m_entries(std::make_shared<Entries>())
{
}
NotificationCenter::~NotificationCenter() = default;

void NotificationCenter::post(const QString &name)
{
    std::vector<quint64> keys;
    for (const auto &[key, entry] : m_entries->entries) {
        if (entry.name == name)
            keys.push_back(key);
    }
    for (const quint64 key : keys) {
        const auto found = m_entries->entries.find(key);
        if (found == m_entries->entries.end())
            continue;
        // A copy: the block may end its own registration.
        const auto block = found->second.block;
        block();
    }
}

std::unique_ptr<NotificationCenter::Observer> NotificationCenter::addObserver(
    const QString &name, std::function<void()> block)
{
    const quint64 key = m_entries->nextKey++;
    m_entries->entries.emplace(key, Entries::Entry{name, std::move(block)});
    return std::make_unique<Registration>(m_entries, key);
}

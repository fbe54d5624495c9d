#include "fakes/FakeHotKeyCenter.h"

namespace
{

constexpr quint32 LastKeyCode = 127;

class FakeRef : public HotKeyRef
{
public:
    using Registered = std::set<FakeHotKeyCenter::Combination>;

    FakeRef(const std::shared_ptr<Registered> &registered, FakeHotKeyCenter::Combination combination)
        : m_registered(registered)
        , m_combination(combination)
    {
    }
    ~FakeRef() override
    {
        if (const auto registered = m_registered.lock())
            registered->erase(m_combination);
    }
    FakeRef(const FakeRef &) = delete;
    FakeRef &operator=(const FakeRef &) = delete;

private:
    std::weak_ptr<Registered> m_registered;
    FakeHotKeyCenter::Combination m_combination;
};

} // namespace

FakeHotKeyCenter::FakeHotKeyCenter()
    : m_registered(std::make_shared<std::set<Combination>>())
{
}

void FakeHotKeyCenter::press(quint32 keyCode, quint32 modifiers)
{
    if (!m_registered->contains({keyCode, modifiers}))
        return;
    if (const auto call = m_handler)
        call();
}

void FakeHotKeyCenter::refuseLater(int status)
{
    for (size_t count = m_registered->size(); count > 0; --count) {
        m_registered->erase(m_registered->begin());
        callFailureHandler(status);
    }
}

HotKeyRegistration FakeHotKeyCenter::registerEventHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id)
{
    if (m_failure != 0)
        return {m_failure, nullptr};
    if (keyCode > LastKeyCode)
        return {HotKeyInvalid, nullptr};
    const Combination combination{keyCode, modifiers};
    if (m_elsewhere.contains(combination) || !m_registered->insert(combination).second)
        return {HotKeyExists, nullptr};
    m_ids.push_back(id);
    return {HotKeyRegistered, std::make_unique<FakeRef>(m_registered, combination)};
}

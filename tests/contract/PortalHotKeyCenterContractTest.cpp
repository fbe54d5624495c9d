#include "contract/HotKeyCenterContract.h"
#include "contract/TestShortcutsPortal.h"
#include "platform/linux/PortalHotKeyCenter.h"
#include "support/MessageBus.h"

namespace
{

/// A desktop with a portal, on a bus of its own.
class PortalWorld : public HotKeyWorld
{
public:
    HotKeyCenter &center() override { return *m_center; }
    void endCenter() override { m_center.reset(); }
    Answer answer() const override { return Answer::Later; }
    int answerCount(int) const override { return m_portal.answerCount(); }

    void press(quint32 keyCode, quint32 modifiers) override { m_portal.press(keys(keyCode, modifiers)); }
    bool takeElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        return m_portal.takeElsewhere(keys(keyCode, modifiers));
    }
    void giveBackElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        m_portal.giveBackElsewhere(keys(keyCode, modifiers));
    }

private:
    static QString keys(quint32 keyCode, quint32 modifiers)
    {
        constexpr quint32 V = 9;
        const QString held = QString::fromLatin1(modifiers & CommandKey ? "LOGO+" : "") +
            QString::fromLatin1(modifiers & ControlKey ? "CTRL+" : "") +
            QString::fromLatin1(modifiers & OptionKey ? "ALT+" : "") +
            QString::fromLatin1(modifiers & ShiftKey ? "SHIFT+" : "");
        return held + QString::fromLatin1(keyCode == V ? "v" : "b");
    }

    MessageBus m_bus;
    EventLoopQueue m_queue;
    TestShortcutsPortal m_portal{m_bus.address()};
    std::unique_ptr<HotKeyCenter> m_center = std::make_unique<PortalHotKeyCenter>(m_bus.address(), m_queue);
};

} // namespace

INSTANTIATE_TEST_SUITE_P(BusBackends, HotKeyCenterContract,
    ::testing::Values(HotKeyBackend{"Portal", [] { return std::make_unique<PortalWorld>(); }}),
    [](const auto &backend) { return backend.param.name; });

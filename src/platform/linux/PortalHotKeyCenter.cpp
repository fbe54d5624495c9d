#include "platform/linux/PortalHotKeyCenter.h"

#include "platform/linux/ActivationToken.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/DesktopHotKeys.h"
#include "platform/linux/PortalTrigger.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/ShortcutsPortal.h"

#include <QCoreApplication>

#include <algorithm>
#include <map>
#include <utility>

namespace
{

/// A way to the portal, as another program than any other in its eyes.
struct Line {
    Line(std::unique_ptr<BusConnection> connection, MainQueue &queue)
        : bus(std::move(connection))
        , desktop(bus->get(), queue)
    {
    }

    std::unique_ptr<BusConnection> bus;
    DesktopPortal desktop;
};

std::shared_ptr<Line> openLine(const QByteArray &busAddress, MainQueue &queue)
{
    auto bus = BusConnection::open(busAddress);
    return bus ? std::make_shared<Line>(std::move(bus), queue) : nullptr;
}

} // namespace

/// The hot keys that are registered, each a shortcut of its own.
class PortalHotKeyCenter::Shortcuts
{
public:
    Shortcuts(const QByteArray &busAddress, MainQueue &queue)
        : m_busAddress(busAddress)
        , m_queue(queue)
        , m_line(openLine(busAddress, queue))
    {
    }

    bool isConnected() const { return m_line && m_line->bus->get().isConnected(); }
    bool contains(const QString &trigger) const
    {
        return std::ranges::any_of(
            m_hotKeys, [&](const auto &each) { return each.second.trigger == trigger; });
    }
    void add(quint64 id, const QString &trigger);
    void remove(quint64 id) { m_hotKeys.erase(id); }

    std::function<void()> handler;
    std::function<void(int status)> onRefused;

private:
    struct HotKey {
        int place; ///< from one on, free again when the hot key is released
        QString trigger;
        std::shared_ptr<Line> line;
        std::unique_ptr<ShortcutsPortal> shortcut;
    };

    std::unique_ptr<ShortcutsPortal> makeShortcut(quint64 id, const HotKey &hotKey);
    bool changeLine(quint64 id);
    int freePlace() const;
    void pressed(const QString &activationToken);
    void refused(quint64 id, ShortcutsPortal::Refusal refusal);

    const QByteArray m_busAddress;
    MainQueue &m_queue;
    std::shared_ptr<Line> m_line;
    std::map<quint64, HotKey> m_hotKeys;
};

void PortalHotKeyCenter::Shortcuts::add(quint64 id, const QString &trigger)
{
    HotKey hotKey{freePlace(), trigger, m_line, nullptr};
    hotKey.shortcut = makeShortcut(id, hotKey);
    m_hotKeys[id] = std::move(hotKey);
}

std::unique_ptr<ShortcutsPortal> PortalHotKeyCenter::Shortcuts::makeShortcut(quint64 id, const HotKey &hotKey)
{
    // The same at each start, as a desktop may keep the user's choices under it.
    const QString session =
        hotKey.place == 1 ? QStringLiteral("larkspool") : QStringLiteral("larkspool_%1").arg(hotKey.place);
    // A desktop keeps the keys that it has once given to an id, and looks at no new proposal for it: one that
    // the user has chosen here would not count.
    const ShortcutsPortal::Shortcut shortcut{session, QStringLiteral("show-history-") + hotKey.trigger,
        //: What a global keyboard shortcut does; the desktop shows it in its own settings.
        QCoreApplication::translate("PortalHotKeyCenter", "Show the clipboard history"), hotKey.trigger};
    const ShortcutsPortal::Events events{.onPress = [this](const QString &token) { pressed(token); },
        .onRefusal = [this, id](ShortcutsPortal::Refusal refusal) { refused(id, refusal); }};
    return std::make_unique<ShortcutsPortal>(hotKey.line->desktop, shortcut, events);
}

/// The name of a session is taken for the connection that had it: another one may have it.
bool PortalHotKeyCenter::Shortcuts::changeLine(quint64 id)
{
    auto line = openLine(m_busAddress, m_queue);
    if (!line)
        return false;
    HotKey &hotKey = m_hotKeys.at(id);
    hotKey.shortcut.reset();
    // The old one is on the stack.
    m_queue.async([old = std::exchange(hotKey.line, line)] {});
    m_line = line;
    hotKey.shortcut = makeShortcut(id, hotKey);
    return true;
}

int PortalHotKeyCenter::Shortcuts::freePlace() const
{
    int place = 1;
    while (std::ranges::any_of(m_hotKeys, [place](const auto &each) { return each.second.place == place; }))
        ++place;
    return place;
}

void PortalHotKeyCenter::Shortcuts::pressed(const QString &activationToken)
{
    offerActivationToken(activationToken);
    // A copy: the handler may register, release, install another handler, or end the centre.
    if (const auto call = handler)
        call();
    offerActivationToken({});
}

void PortalHotKeyCenter::Shortcuts::refused(quint64 id, ShortcutsPortal::Refusal refusal)
{
    if (refusal == ShortcutsPortal::Refusal::LeftOver && changeLine(id))
        return;
    m_hotKeys.erase(id);
    // Last, and a copy: this may end with the centre.
    const auto call = onRefused;
    call(refusal == ShortcutsPortal::Refusal::NoPortal ? HotKeyUnavailable : HotKeyExists);
}

class PortalHotKeyCenter::Registration : public HotKeyRef
{
public:
    Registration(const std::shared_ptr<Shortcuts> &shortcuts, quint64 id)
        : m_shortcuts(shortcuts)
        , m_id(id)
    {
    }
    ~Registration() override
    {
        if (const auto shortcuts = m_shortcuts.lock())
            shortcuts->remove(m_id);
    }
    Registration(const Registration &) = delete;
    Registration &operator=(const Registration &) = delete;

private:
    std::weak_ptr<Shortcuts> m_shortcuts;
    quint64 m_id;
};

PortalHotKeyCenter::PortalHotKeyCenter(const QByteArray &busAddress, MainQueue &queue)
    : m_shortcuts(std::make_shared<Shortcuts>(busAddress, queue))
{
    m_shortcuts->onRefused = [this](int status) { registrationFailed(status); };
}

PortalHotKeyCenter::~PortalHotKeyCenter() = default;

bool PortalHotKeyCenter::isConnected() const
{
    return m_shortcuts->isConnected();
}

HotKeyRegistration PortalHotKeyCenter::registerEventHotKey(quint32 keyCode, quint32 modifiers, HotKeyId)
{
    const auto trigger = portalTrigger(keyCode, modifiers);
    if (!trigger)
        return {HotKeyInvalid, nullptr};
    if (!isConnected())
        return {HotKeyUnavailable, nullptr};
    if (m_shortcuts->contains(*trigger))
        return {HotKeyExists, nullptr};
    const quint64 id = m_nextId++;
    m_shortcuts->add(id, *trigger);
    return {HotKeyRegistered, std::make_unique<Registration>(m_shortcuts, id)};
}

void PortalHotKeyCenter::installEventHandler(std::function<void()> handler)
{
    m_shortcuts->handler = std::move(handler);
}

std::unique_ptr<HotKeyCenter> platform::makePortalHotKeyCenter(MainQueue &queue)
{
    const QByteArray address = sessionbus::address();
    if (address.isEmpty())
        return nullptr;
    auto center = std::make_unique<PortalHotKeyCenter>(address, queue);
    return center->isConnected() ? std::move(center) : nullptr;
}

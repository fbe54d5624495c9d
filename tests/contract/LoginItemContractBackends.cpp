#include "contract/LoginItemContract.h"
#include "contract/TestBackgroundPortal.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/ManualMainQueue.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/BackgroundPortal.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QDBusPendingCall>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{

class FakeWorld : public LoginItemWorld
{
public:
    LoginItem &item() override { return *m_item; }
    void endItem() override
    {
        m_wasRegistered = m_item->isRegistered;
        m_item.reset();
    }
    bool isRegistered() override { return m_item ? m_item->isRegistered : m_wasRegistered; }
    void refuse() override { m_item->failure = Error{QStringLiteral("the test says no")}; }
    void allow() override { m_item->failure.reset(); }
    void catchUp() override {}

protected:
    std::unique_ptr<FakeLoginItem> m_item = std::make_unique<FakeLoginItem>();

private:
    bool m_wasRegistered = false;
};

/// The same, which answers later.
class LateFakeWorld : public FakeWorld
{
public:
    LateFakeWorld() { m_item->answersAtOnce = false; }

    void catchUp() override
    {
        while (m_item && m_item->waitingCount() > 0)
            m_item->answer();
    }
};

class AutostartWorld : public LoginItemWorld
{
public:
    LoginItem &item() override { return *m_item; }
    void endItem() override { m_item.reset(); }
    bool isRegistered() override
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) && file.readAll().contains("\nExec=/bin/sh\n");
    }
    void refuse() override { EXPECT_TRUE(QDir().mkpath(m_path)); }
    void allow() override { EXPECT_TRUE(QDir().rmdir(m_path)); }
    void catchUp() override {}

private:
    QTemporaryDir m_home;
    const QString m_folder = m_home.filePath(QStringLiteral("autostart"));
    const QString m_path = m_folder + QStringLiteral("/org.larkspool.Larkspool.desktop");
    std::unique_ptr<AutostartEntry> m_item =
        std::make_unique<AutostartEntry>(AutostartEntry::Places{m_folder, {}}, QStringLiteral("/bin/sh"));
};

class PortalWorld : public LoginItemWorld
{
public:
    PortalWorld()
    {
        if (!m_bus.isRunning())
            return;
        m_portal = std::make_unique<TestBackgroundPortal>(m_bus.address());
        m_connection = BusConnection::open(m_bus.address());
        m_item =
            std::make_unique<BackgroundPortal>(m_connection->get(), m_queue, QStringLiteral("larkspool"));
    }

    bool isUsable() const override { return m_item != nullptr; }
    LoginItem &item() override { return *m_item; }
    void endItem() override { m_item.reset(); }
    bool isRegistered() override { return m_portal->startsAtLogin(); }
    void refuse() override { m_portal->decision = TestBackgroundPortal::Decision::Denies; }
    void allow() override { m_portal->decision = TestBackgroundPortal::Decision::Allows; }
    void catchUp() override
    {
        m_queue.drain();
        // The portal answers this after all that came before it.
        const QDBusPendingCall last = m_connection->get().asyncCall(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                QStringLiteral("/org/freedesktop/portal/desktop"),
                QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get")));
        EXPECT_TRUE(waitUntil([&last] { return last.isFinished(); }));
    }

private:
    MessageBus m_bus;
    ManualMainQueue m_queue;
    std::unique_ptr<TestBackgroundPortal> m_portal;
    std::unique_ptr<BusConnection> m_connection;
    std::unique_ptr<BackgroundPortal> m_item;
};

template<class World>
std::unique_ptr<LoginItemWorld> make()
{
    return std::make_unique<World>();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Backends, LoginItemContract,
    ::testing::Values(LoginItemBackend{"Fake", make<FakeWorld>},
        LoginItemBackend{"LateFake", make<LateFakeWorld>},
        LoginItemBackend{"Autostart", make<AutostartWorld>}, LoginItemBackend{"Portal", make<PortalWorld>}),
    [](const auto &backend) { return backend.param.name; });

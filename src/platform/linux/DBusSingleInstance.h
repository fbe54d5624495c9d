#pragma once

#include "platform/SingleInstance.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QTimer>
#include <QVariantMap>

#include <memory>
#include <optional>

class BusConnection;

/// One owner of the name "org.larkspool.Larkspool" on a message bus, which answers to the interface
/// org.freedesktop.Application there (Desktop Entry Specification, "D-Bus Activation"), on a connection of
/// its own.
///
/// A call's proof that it was the user's doing is offered to the toolkit (see offerActivationToken) before
/// `onActivate`. Calls that come in before `onActivate` is set wait for it. Calls that come in while the
/// event loop is held up, as during the start, count as one: each is the wish to see the program, and a
/// second one must not take back what the first has got.
///
/// When the bus goes away, an instance stays what it was.
class DBusSingleInstance : public SingleInstance
{
public:
    /// Talks to nobody yet. Reads the proof that this start was the user's doing from the environment
    /// ($XDG_ACTIVATION_TOKEN, $DESKTOP_STARTUP_ID), which a toolkit clears later.
    explicit DBusSingleInstance(QByteArray busAddress);
    ~DBusSingleInstance() override;

    Claim claim() override;

private:
    enum class Name { Ours, Taken, Unknown };
    enum class Owner { Activated, Refuses, Gone };

    bool exportObject();
    Claim claimName();
    Name requestName(const QDeadlineTimer &deadline);
    Owner activateOwner(const QDeadlineTimer &deadline);
    void activationRequested(const QVariantMap &platformData);
    void deliver();

    const QByteArray m_busAddress;
    QVariantMap m_ownPlatformData;
    std::unique_ptr<BusConnection> m_bus;
    std::unique_ptr<QObject> m_object;
    QTimer m_delivery;
    QString m_waitingToken;
};

namespace platform
{

/// The instance on the session bus. Null, and the process does without the bus from then on, when there is
/// none that answers. To be made before the toolkit's application object.
std::unique_ptr<SingleInstance> makeDBusSingleInstance();

} // namespace platform

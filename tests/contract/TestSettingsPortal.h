#pragma once

#include "platform/linux/AppearanceSettings.h"
#include "platform/linux/BusConnection.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <vector>

/// A hand-written settings portal on a bus connection of its own, driven by the test's event loop. It is the
/// portal from `start` on, until it goes or another one starts.
class TestSettingsPortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// The portal's way of reading a setting; the other ones are unknown methods.
    enum class Version { First, WithoutRead };

    explicit TestSettingsPortal(const QByteArray &busAddress, Version version = Version::First);
    ~TestSettingsPortal() override;

    using Setting = AppearanceSettings::Setting;

    /// Says nothing, to anybody, from now on.
    bool isSilent = false;
    /// Answers without any value.
    bool hasEmptyAnswers = false;

    /// Takes the portal's name, if need be away from another.
    void start();
    /// From now on it is so, and nobody is told.
    void set(Setting setting, const QVariant &value);
    /// From now on it is so, and everybody is told.
    void change(Setting setting, const QVariant &value);
    /// Tells of a change that there is none of.
    void tell(const QString &nameSpace, const QString &key, const QVariant &value);
    /// Waits until the bus has passed on all that was told.
    void flush();
    /// How often it was asked something.
    int questionCount() const { return m_questionCount; }

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    struct Entry {
        AppearanceSettings::Name name;
        QVariant value;
    };
    const Entry *entry(const AppearanceSettings::Name &name) const;
    QDBusMessage answer(const QDBusMessage &question) const;
    QVariant callBus(const QString &method, const QVariantList &arguments);

    std::unique_ptr<BusConnection> m_bus;
    Version m_version;
    std::vector<Entry> m_entries;
    int m_questionCount = 0;
};

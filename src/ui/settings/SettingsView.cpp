#include "ui/settings/SettingsView.h"

#include "base/Console.h"
#include "base/Notifications.h"
#include "platform/HelpPages.h"

namespace
{

QVariantMap choice(const QVariant &value, const QString &text)
{
    return {{QStringLiteral("value"), value}, {QStringLiteral("text"), text}};
}

} // namespace

SettingsView::SettingsView(const Surroundings &surroundings)
    : m_surroundings(surroundings)
    , m_shortcutRecorder({.label = tr("Open Larkspool"),
                             .defaultsKey = preference::HotkeyCombo,
                             .notificationName = notification::reloadHotkey()},
          {.defaults = surroundings.defaults,
              .notifications = surroundings.notifications,
              .events = surroundings.events,
              .onRecording = surroundings.onRecording})
    , m_isLaunchedAtLogin(surroundings.defaults.value(preference::LaunchAtLogin))
{
    if (surroundings.modelContext)
        m_categoryManager = std::make_unique<CategoryManagerView>(*surroundings.modelContext);
    connect(&surroundings.defaults, &UserDefaults::changed, this, &SettingsView::preferencesChanged);
}

SettingsView::~SettingsView() = default;

int SettingsView::maxHistoryCount() const
{
    return m_surroundings.defaults.value(preference::MaxHistoryCount);
}

void SettingsView::setMaxHistoryCount(int count)
{
    m_surroundings.defaults.setValue(preference::MaxHistoryCount, count);
}

bool SettingsView::launchAtLogin() const
{
    return m_surroundings.defaults.value(preference::LaunchAtLogin);
}

void SettingsView::setLaunchAtLogin(bool isOn)
{
    m_surroundings.defaults.setValue(preference::LaunchAtLogin, isOn);
}

bool SettingsView::showSourceApp() const
{
    return m_surroundings.defaults.value(preference::ShowSourceApp);
}

void SettingsView::setShowSourceApp(bool isOn)
{
    m_surroundings.defaults.setValue(preference::ShowSourceApp, isOn);
}

bool SettingsView::playSoundOnCopy() const
{
    return m_surroundings.defaults.value(preference::PlaySoundOnCopy);
}

void SettingsView::setPlaySoundOnCopy(bool isOn)
{
    m_surroundings.defaults.setValue(preference::PlaySoundOnCopy, isOn);
}

bool SettingsView::playSoundOnNavigate() const
{
    return m_surroundings.defaults.value(preference::PlaySoundOnNavigate);
}

void SettingsView::setPlaySoundOnNavigate(bool isOn)
{
    m_surroundings.defaults.setValue(preference::PlaySoundOnNavigate, isOn);
}

QString SettingsView::borderColorHex() const
{
    return m_surroundings.defaults.value(preference::BorderColorHex);
}

void SettingsView::setBorderColorHex(const QString &hex)
{
    m_surroundings.defaults.setValue(preference::BorderColorHex, hex);
}

QString SettingsView::categorySearchKey() const
{
    return m_surroundings.defaults.value(preference::CategorySearchKey);
}

void SettingsView::setCategorySearchKey(const QString &key)
{
    m_surroundings.defaults.setValue(preference::CategorySearchKey, key);
}

QVariantList SettingsView::borderColorOptions() const
{
    return {choice(QStringLiteral("#FF8C00"), tr("Orange")), choice(QStringLiteral("#FF3B30"), tr("Red")),
        choice(QStringLiteral("#007AFF"), tr("Blue")), choice(QStringLiteral("#34C759"), tr("Green")),
        choice(QStringLiteral("#AF52DE"), tr("Purple")), choice(QStringLiteral("#FF2D55"), tr("Pink")),
        choice(QStringLiteral("#FFCC00"), tr("Yellow")), choice(QStringLiteral("#FFFFFF"), tr("White"))};
}

QVariantList SettingsView::maxHistoryChoices() const
{
    return {choice(100, QStringLiteral("100")), choice(250, QStringLiteral("250")),
        choice(500, QStringLiteral("500")), choice(1000, QStringLiteral("1000")),
        //: As many entries as there are.
        choice(10000, tr("Unlimited"))};
}

QVariantList SettingsView::categorySearchChoices() const
{
    //: The name of the key.
    const QString tab = tr("Tab");
    //: A key by the character that it types, and what that is called.
    const QString slash = tr("/ (Slash)");
    return {choice(QStringLiteral("tab"), tab), choice(QStringLiteral("slash"), slash)};
}

void SettingsView::clearAllHistory()
{
    m_surroundings.notifications.post(notification::clearAllHistory());
}

void SettingsView::openWebsite()
{
    m_surroundings.openPage(helpPage(HelpPage::Overview));
}

void SettingsView::openPrivacyPolicy()
{
    m_surroundings.openPage(helpPage(HelpPage::Privacy));
}

void SettingsView::preferencesChanged()
{
    if (launchAtLogin() != m_isLaunchedAtLogin) {
        m_isLaunchedAtLogin = launchAtLogin();
        toggleLaunchAtLogin(m_isLaunchedAtLogin);
    }
    m_shortcutRecorder.loadCombo();
    Q_EMIT changed();
}

void SettingsView::toggleLaunchAtLogin(bool isEnabled)
{
    const auto report = [](const Result<Success> &outcome) {
        if (!outcome)
            consoleLine(QStringLiteral("Failed to toggle launch at login: ") + outcome.error().description);
    };
    if (isEnabled)
        m_surroundings.loginItem.registerItem(report);
    else
        m_surroundings.loginItem.unregisterItem(report);
}

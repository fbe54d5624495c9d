#pragma once

#include "base/NotificationCenter.h"
#include "base/UserDefaults.h"
#include "platform/LoginItem.h"
#include "ui/settings/CategoryManagerView.h"
#include "ui/settings/ShortcutRecorderView.h"

#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>

/// The content of the settings window: every preference of the user, as the store of preferences holds it at
/// the moment. Main thread only.
class SettingsView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application's controller")
    Q_PROPERTY(int maxHistoryCount READ maxHistoryCount WRITE setMaxHistoryCount NOTIFY changed)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY changed)
    Q_PROPERTY(bool showSourceApp READ showSourceApp WRITE setShowSourceApp NOTIFY changed)
    Q_PROPERTY(bool playSoundOnCopy READ playSoundOnCopy WRITE setPlaySoundOnCopy NOTIFY changed)
    Q_PROPERTY(bool playSoundOnNavigate READ playSoundOnNavigate WRITE setPlaySoundOnNavigate NOTIFY changed)
    Q_PROPERTY(QString borderColorHex READ borderColorHex WRITE setBorderColorHex NOTIFY changed)
    Q_PROPERTY(QString categorySearchKey READ categorySearchKey WRITE setCategorySearchKey NOTIFY changed)
    Q_PROPERTY(QVariantList borderColorOptions READ borderColorOptions CONSTANT)
    Q_PROPERTY(QVariantList maxHistoryChoices READ maxHistoryChoices CONSTANT)
    Q_PROPERTY(QVariantList categorySearchChoices READ categorySearchChoices CONSTANT)
    Q_PROPERTY(ShortcutRecorderView *shortcutRecorder READ shortcutRecorder CONSTANT)
    Q_PROPERTY(CategoryManagerView *categoryManager READ categoryManager CONSTANT)

public:
    /// What happens around it; all of it must outlive it.
    struct Surroundings {
        UserDefaults &defaults;
        NotificationCenter &notifications;
        LocalEvents &events;
        LoginItem &loginItem;
        ModelContext *modelContext = nullptr; ///< null without a store
        /// Called as the recorder begins to listen for a key combination, and when it has ended.
        std::function<void(ShortcutRecorderView::Recording)> onRecording;
        std::function<void(const QUrl &)> openPage;
    };
    explicit SettingsView(const Surroundings &surroundings);
    ~SettingsView() override;

    int maxHistoryCount() const;
    void setMaxHistoryCount(int count);
    bool launchAtLogin() const;
    void setLaunchAtLogin(bool isOn);
    bool showSourceApp() const;
    void setShowSourceApp(bool isOn);
    bool playSoundOnCopy() const;
    void setPlaySoundOnCopy(bool isOn);
    bool playSoundOnNavigate() const;
    void setPlaySoundOnNavigate(bool isOn);
    QString borderColorHex() const;
    void setBorderColorHex(const QString &hex);
    QString categorySearchKey() const;
    void setCategorySearchKey(const QString &key);

    /// What can be chosen, in the order of display; each an object with the `value` that is stored and the
    /// `text` that is shown.
    QVariantList borderColorOptions() const;
    QVariantList maxHistoryChoices() const;
    QVariantList categorySearchChoices() const;

    ShortcutRecorderView *shortcutRecorder() { return &m_shortcutRecorder; }
    /// Null without a store.
    CategoryManagerView *categoryManager() { return m_categoryManager.get(); }

    /// Deletes every entry, pinned ones too.
    Q_INVOKABLE void clearAllHistory();
    Q_INVOKABLE void openWebsite();
    Q_INVOKABLE void openPrivacyPolicy();

Q_SIGNALS:
    void changed();

private:
    void preferencesChanged();
    void toggleLaunchAtLogin(bool isEnabled);

    Surroundings m_surroundings;
    ShortcutRecorderView m_shortcutRecorder;
    std::unique_ptr<CategoryManagerView> m_categoryManager;
    /// What the login item was last told.
    bool m_isLaunchedAtLogin;
};

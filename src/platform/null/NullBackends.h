#pragma once

#include "platform/Appearance.h"
#include "platform/EventPoster.h"
#include "platform/HotKeyCenter.h"
#include "platform/Pasteboard.h"
#include "platform/Screens.h"
#include "platform/ScriptingService.h"
#include "platform/SingleInstance.h"
#include "platform/StatusBar.h"
#include "platform/SystemSound.h"
#include "platform/UnifiedLog.h"
#include "platform/Workspace.h"

/// A pasteboard without a desktop: nobody else writes it, and what this program writes is read by nobody.
class NullPasteboard : public Pasteboard
{
public:
    qint64 changeCount() const override { return m_changeCount; }
    bool advance() override { return false; }
    std::vector<PasteboardItem> pasteboardItems() const override { return {}; }
    std::optional<QByteArray> data(PasteboardType) const override { return std::nullopt; }
    std::optional<QByteArray> pngRepresentation(PasteboardType) const override { return std::nullopt; }
    void clearContents() override { ++m_changeCount; }
    void setString(const QByteArray &) override {}
    void writeObjects(const std::vector<PasteboardObject> &) override {}

private:
    qint64 m_changeCount = 0;
};

/// A desktop that does not tell which application is in front.
class NullWorkspace : public Workspace
{
public:
    std::shared_ptr<RunningApplication> frontmostApplication() const override { return nullptr; }
};

/// A desktop that offers no hot keys to programs.
class NullHotKeyCenter : public HotKeyCenter
{
public:
    HotKeyRegistration registerEventHotKey(quint32, quint32, HotKeyId) override
    {
        return {HotKeyUnavailable, nullptr};
    }
    void installEventHandler(std::function<void()>) override {}
};

/// A desktop that takes no keys from programs.
class NullEventPoster : public EventPoster
{
public:
    bool isProcessTrusted() const override { return false; }
    bool isProcessTrustedWithPrompt() override { return false; }
    std::unique_ptr<EventSource> createEventSource(int) override { return nullptr; }
    std::unique_ptr<KeyEvent> createKeyboardEvent(const EventSource *, quint16, KeyMotion) override
    {
        return nullptr;
    }
    void post(EventTapLocation, const KeyEvent &) override {}
};

/// A desktop without a service for pressing keys: every script fails with the reason.
class NullScriptingService : public ScriptingService
{
public:
    /// The reason, in plain words.
    explicit NullScriptingService(QString reason)
        : m_reason(std::move(reason))
    {
    }
    std::unique_ptr<Script> compile(const QString &source) override;

private:
    QString m_reason;
};

class NullScreens : public Screens
{
public:
    std::optional<QRect> visibleFrame() const override { return std::nullopt; }
};

/// A desktop without a tray.
class NullStatusBar : public StatusBar
{
public:
    std::unique_ptr<StatusItem> statusItem(StatusItemButton, std::function<void()>) override
    {
        return std::make_unique<StatusItem>();
    }
};

/// A session without a message bus.
class NullSingleInstance : public SingleInstance
{
public:
    Claim claim() override { return Claim::Unknown; }
};

class NullUnifiedLog : public UnifiedLog
{
public:
    void info(const QString &, const QString &) override {}
};

/// A desktop that tells nothing about its look.
class NullAppearance : public Appearance
{
public:
    ColorScheme colorScheme() const override { return ColorScheme::Light; }
    bool hasAnimations() const override { return true; }
};

class NullSystemSound : public SystemSound
{
public:
    void playNavigationClick() override {}
};

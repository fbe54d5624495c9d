#pragma once

#include "PictureScene.h"
#include "app/SettingsWindow.h"
#include "fakes/FakeAppearance.h"
#include "fakes/FakeLocalEvents.h"
#include "fakes/FakeLoginItem.h"
#include "support/TemporaryStore.h"
#include "ui/style/ThemeDriver.h"

#include <QQmlEngine>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// The window of the settings over a store and preferences of its own; nothing moves.
class SettingsScene : public ::testing::Test, public PictureScene
{
public:
    ~SettingsScene() override;

    // Before it is shown

    void setAppearance(Appearance::ColorScheme scheme);
    /// The categories that the program begins with.
    void addDefaults();
    void addCategory(const QString &name);

    // Shown

    SettingsView &view() { return m_window->view(); }
    void show();
    /// A click on the tab, by its name in the sources.
    void choose(const char *tab);
    using PictureScene::shown;
    void type(const QString &text);
    /// Nothing here waits for anything.
    void passTime() {}

private:
    QQuickWindow *window() const override { return m_window.get(); }
    QString preferencesPath() const { return m_folder.filePath(QStringLiteral("larkspool.conf")); }

    TemporaryStore m_store;
    QTemporaryDir m_folder;
    UserDefaults m_defaults{preferencesPath()};
    NotificationCenter m_notifications;
    FakeLocalEvents m_events;
    FakeLoginItem m_loginItem;
    FakeAppearance m_appearance;
    QQmlEngine m_engine;
    std::unique_ptr<ThemeDriver> m_themeDriver;
    std::unique_ptr<SettingsWindow> m_window;
};

#pragma once

#include "ui/settings/SettingsView.h"

#include <QQuickWindow>

#include <memory>

class QQmlEngine;

/// The window of the settings: of one size, with a title, above other windows. Main thread only.
class SettingsWindow : public QQuickWindow
{
    Q_OBJECT

public:
    static constexpr QSize Size{480, 400};

    /// The engine, and what the view stands on, must outlive it. A line says so when it has no content.
    SettingsWindow(QQmlEngine &engine, std::unique_ptr<SettingsView> view);
    ~SettingsWindow() override;

    SettingsView &view() { return *m_view; }

    /// Moves it to the middle of a frame, in the desktop's coordinates.
    void centerIn(const QRect &frame);
    void makeKeyAndOrderFront();

Q_SIGNALS:
    /// The user has closed it.
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    std::unique_ptr<SettingsView> m_view;
    std::unique_ptr<QQuickItem> m_content;
};

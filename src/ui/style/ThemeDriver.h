#pragma once

#include <QPointer>

class Appearance;
class QQmlEngine;

/// Lets the theme of an engine look as the desktop wants: at once, and whenever that changes. Main thread
/// only.
class ThemeDriver
{
public:
    /// Takes `Appearance::onChanged`. The engine must know where the modules are; it and the appearance must
    /// outlive the driver.
    ThemeDriver(QQmlEngine &engine, Appearance &appearance);
    ~ThemeDriver();
    ThemeDriver(const ThemeDriver &) = delete;
    ThemeDriver &operator=(const ThemeDriver &) = delete;

private:
    void apply();

    Appearance &m_appearance;
    QPointer<QObject> m_theme;
};

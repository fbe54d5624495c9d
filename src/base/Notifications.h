#pragma once

#include <QString>

/// The application-wide notifications.
namespace notification
{

/// From the controller to the history view: the panel is about to be shown.
inline QString panelWillShow()
{
    return QStringLiteral("Larkspool.panelWillShow");
}

/// From the history view to the controller: show the settings.
inline QString openSettings()
{
    return QStringLiteral("Larkspool.openSettings");
}

/// From the shortcut recorder to the controller: the stored key combination has changed.
inline QString reloadHotkey()
{
    return QStringLiteral("Larkspool.reloadHotkey");
}

/// From the settings to the controller: delete every entry.
inline QString clearAllHistory()
{
    return QStringLiteral("Larkspool.clearAllHistory");
}

} // namespace notification

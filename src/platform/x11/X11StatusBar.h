#pragma once

#include "platform/StatusBar.h"

/// The tray of an X server, by the protocols from before D-Bus (freedesktop.org, "System Tray Protocol" and
/// "XEmbed Protocol"). Each item has a connection of its own, and opens it when it is made.
class X11StatusBar : public StatusBar
{
public:
    std::unique_ptr<StatusItem> statusItem(StatusItemButton button, std::function<void()> action) override;
};

#include "platform/x11/X11StatusBar.h"

#include "platform/x11/X11Backends.h"
#include "platform/x11/X11TrayItem.h"

std::unique_ptr<StatusItem> X11StatusBar::statusItem(StatusItemButton button, std::function<void()> action)
{
    if (auto item = X11TrayItem::open(std::move(button), std::move(action)))
        return item;
    return std::make_unique<StatusItem>();
}

std::unique_ptr<StatusBar> platform::makeX11StatusBar()
{
    // Items show in D-Bus trays nearly everywhere: until one has to show here, there is nothing to keep.
    return X11Connection::open() ? std::make_unique<X11StatusBar>() : nullptr;
}

#pragma once

#include "base/MainQueue.h"

#include <functional>
#include <memory>
#include <optional>

class BusCall;

/// Which of the user's keyboard layouts is active, as KWin tells on the session bus ("org.kde.keyboard").
class PlasmaKeyboardLayout
{
public:
    using Callback = std::function<void(std::optional<uint> layout)>;

    /// The queue must outlive it.
    explicit PlasmaKeyboardLayout(MainQueue &queue);
    ~PlasmaKeyboardLayout();

    /// Asks; the answer comes once, now or later: the layout's place in the keymap, or nothing when nobody
    /// tells. A call before that takes the place of the one before, which is not answered.
    void read(Callback onRead);

private:
    MainQueue &m_queue;
    std::unique_ptr<BusCall> m_call;
};

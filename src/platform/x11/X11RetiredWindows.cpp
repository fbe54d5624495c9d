#include "platform/x11/X11RetiredWindows.h"

namespace
{
constexpr std::chrono::seconds Grace(10);
}

void X11RetiredWindows::add(xcb_window_t window)
{
    m_windows.emplace(window, std::chrono::steady_clock::now() + Grace);
}

void X11RetiredWindows::answered(xcb_window_t window)
{
    if (m_windows.erase(window) != 0)
        xcb_destroy_window(m_connection.get(), window);
}

void X11RetiredWindows::check(Time now)
{
    std::erase_if(m_windows, [&](const auto &retired) {
        const bool hasExpired = now >= retired.second;
        if (hasExpired)
            xcb_destroy_window(m_connection.get(), retired.first);
        return hasExpired;
    });
}

#pragma once

#include <vector>

namespace platform
{

/// How the toolkit is to work, by what the session offers.
///
/// It becomes the compositor's client where that lends its clipboard to programs without a window; else the X
/// server's, through which all else has to go as well then, and which puts the panel where it belongs. It
/// loads no graphics driver, since this program draws without one. What the user has set ($QT_QPA_PLATFORM,
/// $QT_QUICK_BACKEND, $QT_WAYLAND_CLIENT_BUFFER_INTEGRATION) holds.
///
/// To be made before the application object, and destroyed after that has been made.
class ToolkitChoice
{
public:
    ToolkitChoice();
    /// Programs that this one starts are not to inherit the choice.
    ~ToolkitChoice();
    ToolkitChoice(const ToolkitChoice &) = delete;
    ToolkitChoice &operator=(const ToolkitChoice &) = delete;

private:
    void choose(const char *variable, const char *value);

    std::vector<const char *> m_chosen;
};

} // namespace platform

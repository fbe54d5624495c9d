#pragma once

namespace platform
{

/// Decides whose client the toolkit is to be, by what the session offers: the compositor's where that lends
/// its clipboard to programs without a window; else the X server's, through which all else has to go as well,
/// and which puts the panel where it belongs. What the user has set ($QT_QPA_PLATFORM) holds.
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
    bool m_isMade = false;
};

} // namespace platform

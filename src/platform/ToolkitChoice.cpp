#include "platform/ToolkitChoice.h"

#include "platform/wayland/WaylandBackends.h"

#include <QtGlobal>

namespace
{

constexpr char PlatformVariable[] = "QT_QPA_PLATFORM";

} // namespace

platform::ToolkitChoice::ToolkitChoice()
{
    if (!qEnvironmentVariableIsEmpty(PlatformVariable) || !hasWaylandCompositor())
        return;
    // The first of the list that can be had.
    qputenv(PlatformVariable, hasWaylandClipboard() ? "wayland;xcb" : "xcb;wayland");
    m_isMade = true;
}

platform::ToolkitChoice::~ToolkitChoice()
{
    if (m_isMade)
        qunsetenv(PlatformVariable);
}

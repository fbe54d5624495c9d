#include "platform/ToolkitChoice.h"

#include "platform/wayland/WaylandBackends.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QOpenGLContext>

platform::ToolkitChoice::ToolkitChoice()
{
    if (!hasWaylandCompositor())
        return;
    // The first of the list that can be had.
    choose("QT_QPA_PLATFORM", hasWaylandClipboard() ? "wayland;xcb" : "xcb;wayland");
    if (!qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        return;
    // A name that stands for none: the toolkit says so twice, which is no news to anybody.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.wayland.warning=false"));
    choose("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none");
}

platform::ToolkitChoice::~ToolkitChoice()
{
    // It chooses what to draw with at the first question, which would be the first window.
    if (QGuiApplication::platformName() == QLatin1String("wayland"))
        QOpenGLContext::supportsThreadedOpenGL();
    for (const char *const variable : m_chosen)
        qunsetenv(variable);
    QLoggingCategory::setFilterRules(QString());
}

void platform::ToolkitChoice::choose(const char *variable, const char *value)
{
    if (!qEnvironmentVariableIsEmpty(variable))
        return;
    qputenv(variable, value);
    m_chosen.push_back(variable);
}

#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/MemoryPolicy.h"
#include "app/TerminationSignals.h"
#include "app/Translations.h"
#include "base/Console.h"
#include "platform/PlatformLoader.h"
#include "platform/ToolkitChoice.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickWindow>

#include <csignal>
#include <cstdio>

namespace
{

/// The best back ends that this session offers.
AppDelegate::Ports loadPorts(MainQueue &queue)
{
    AppDelegate::Ports ports;
    ports.appearance = platform::loadAppearance(queue);
    ports.pasteboard = platform::loadPasteboard();
    ports.workspace = platform::loadWorkspace();
    ports.hotKeyCenter = platform::loadHotKeyCenter(queue);
    ports.eventPoster = platform::loadEventPoster(queue, *ports.workspace);
    ports.scripting = platform::loadScriptingService(*ports.workspace);
    ports.localEvents = platform::loadLocalEvents();
    ports.loginItem = platform::loadLoginItem(queue);
    ports.systemSound = platform::loadSystemSound();
    ports.screens = platform::loadScreens();
    ports.statusBar = platform::loadStatusBar();
    ports.unifiedLog = platform::loadUnifiedLog();
    return ports;
}

/// Whether there is a desktop to talk to; the toolkit would end the program with a core dump otherwise.
bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
        !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// The arguments after the program's name.
QStringList texts(int argumentCount, char **arguments)
{
    QStringList texts;
    for (int index = 1; index < argumentCount; ++index)
        texts.append(QString::fromLocal8Bit(arguments[index]));
    return texts;
}

} // namespace

int main(int argumentCount, char **arguments)
{
    giveLargeBlocksBack();
    if (const auto answer = commandline::answer(texts(argumentCount, arguments))) {
        consoleLine(*answer);
        return 0;
    }
    if (!hasDisplay()) {
        consoleLine(
            QStringLiteral("[Larkspool] No desktop session: neither DISPLAY nor WAYLAND_DISPLAY is set"));
        return 1;
    }
    // Somebody who stops reading the program's lines does not end it.
    std::signal(SIGPIPE, SIG_IGN);
    TerminationSignals terminationSignals;
    // Measured: starts faster, shows its first frame sooner and needs half the memory of a GPU's context.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // Before the toolkit takes what tells who has started the program out of the environment.
    const auto instance = platform::loadSingleInstance();
    auto toolkitChoice = std::make_unique<platform::ToolkitChoice>();
    const QGuiApplication application(argumentCount, arguments);
    toolkitChoice.reset();
    if (const auto complaint = commandline::complaint(QCoreApplication::arguments().mid(1))) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*complaint));
        return 2;
    }
    QGuiApplication::setApplicationName(QStringLiteral("larkspool"));
    QGuiApplication::setApplicationVersion(QStringLiteral(LARKSPOOL_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.larkspool.Larkspool"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    terminationSignals.quitApplication();
    // At each copy the toolkit's text fields would ask the clipboard's owner for its text, and wait for it.
    QGuiApplication::clipboard()->blockSignals(true);
    switch (instance->claim()) {
    case SingleInstance::Claim::HandedOver:
        return 0;
    case SingleInstance::Claim::Failed:
        consoleLine(QStringLiteral("[Larkspool] Another instance is running, and it does not answer"));
        return 1;
    case SingleInstance::Claim::Ours:
    case SingleInstance::Claim::Unknown:
        break;
    }
    const Translations translations;
    EventLoopQueue queue;
    AppDelegate delegate(queue, loadPorts(queue), AppDelegate::Paths());
    instance->onActivate = [&delegate](const QString &) { delegate.togglePanel(); };
    delegate.applicationDidFinishLaunching();
    const int status = QGuiApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

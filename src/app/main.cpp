#include "app/AppDelegate.h"
#include "app/MemoryPolicy.h"
#include "app/TerminationSignals.h"

#include <QGuiApplication>
#include <QQuickWindow>

int main(int argumentCount, char **arguments)
{
    giveLargeBlocksBack();
    TerminationSignals terminationSignals;
    // Measured: starts faster, shows its first frame sooner and needs half the memory of a GPU's context.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setApplicationName(QStringLiteral("larkspool"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Larkspool"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.larkspool.Larkspool"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    terminationSignals.quitApplication();
    AppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    const int status = QGuiApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

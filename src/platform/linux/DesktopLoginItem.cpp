#include "platform/linux/DesktopLoginItem.h"

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/BackgroundPortal.h"
#include "platform/linux/SessionBus.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace platform
{

bool isSandboxed(const QString &programPath, const QString &flatpakDescription)
{
    const QString snap = qEnvironmentVariable("SNAP");
    return QFileInfo::exists(flatpakDescription) ||
        (!snap.isEmpty() && programPath.startsWith(snap + QLatin1Char('/')));
}

Result<std::unique_ptr<LoginItem>> makeDesktopLoginItem(MainQueue &queue)
{
    const QString program = QCoreApplication::applicationFilePath();
    if (isSandboxed(program, QStringLiteral("/.flatpak-info"))) {
        const QDBusConnection bus = sessionbus::connection();
        if (!bus.isConnected())
            return Error{QStringLiteral("there is no message bus, on which a sandbox would ask the desktop")};
        return std::unique_ptr<LoginItem>(
            std::make_unique<BackgroundPortal>(bus, queue, QFileInfo(program).fileName()));
    }
    auto places = AutostartEntry::defaultPlaces();
    if (places.userFolder.isEmpty())
        return Error{QStringLiteral("there is no home folder")};
    return std::unique_ptr<LoginItem>(std::make_unique<AutostartEntry>(std::move(places), program));
}

} // namespace platform

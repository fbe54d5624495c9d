#include "platform/linux/PlasmaKeyboardLayout.h"

#include "platform/linux/BusCall.h"
#include "platform/linux/SessionBus.h"

namespace
{

/// A paste waits for it.
constexpr std::chrono::milliseconds Patience{300};

} // namespace

PlasmaKeyboardLayout::PlasmaKeyboardLayout(MainQueue &queue)
    : m_queue(queue)
{
}

PlasmaKeyboardLayout::~PlasmaKeyboardLayout() = default;

void PlasmaKeyboardLayout::read(Callback onRead)
{
    const QDBusConnection connection = sessionbus::connection();
    if (!connection.isConnected()) {
        onRead(std::nullopt);
        return;
    }
    const QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.kde.keyboard"),
        QStringLiteral("/Layouts"), QStringLiteral("org.kde.KeyboardLayouts"), QStringLiteral("getLayout"));
    m_call = std::make_unique<BusCall>(
        connection, call, m_queue, Patience, [onRead = std::move(onRead)](const QDBusMessage &reply) {
            bool isNumber = false;
            const uint layout = reply.arguments().value(0).toUInt(&isNumber);
            const bool isAnswer = reply.type() == QDBusMessage::ReplyMessage && isNumber;
            onRead(isAnswer ? std::optional(layout) : std::nullopt);
        });
}

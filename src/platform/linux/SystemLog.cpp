#include "platform/linux/SystemLog.h"

#include <syslog.h>

namespace platform
{
namespace
{

class SystemLog : public UnifiedLog
{
public:
    SystemLog() { openlog("larkspool", LOG_PID, LOG_USER); }
    ~SystemLog() override { closelog(); }
    SystemLog(const SystemLog &) = delete;
    SystemLog &operator=(const SystemLog &) = delete;

    void info(const QString &category, const QString &line) override
    {
        const QByteArray bytes = (category + QStringLiteral(": ") + line).toUtf8();
        syslog(LOG_INFO, "%s", bytes.constData());
    }
};

} // namespace

std::unique_ptr<UnifiedLog> makeSystemLog()
{
    return std::make_unique<SystemLog>();
}

} // namespace platform

#include "platform/null/NullBackends.h"

namespace
{

class FailingScript : public Script
{
public:
    explicit FailingScript(const QString &reason)
        : m_reason(reason)
    {
    }
    void execute(Done onDone) override { onDone(Error{m_reason}); }

private:
    QString m_reason;
};

} // namespace

std::unique_ptr<Script> NullScriptingService::compile(const QString &)
{
    return std::make_unique<FailingScript>(m_reason);
}

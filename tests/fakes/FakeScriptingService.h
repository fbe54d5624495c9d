#pragma once

#include "platform/ScriptingService.h"

#include <optional>

/// A scripting service whose scripts come out as the test says.
class FakeScriptingService : public ScriptingService
{
public:
    bool understands = true;
    std::optional<Error> failure;
    QString source;

    std::unique_ptr<Script> compile(const QString &text) override
    {
        source = text;
        return understands ? std::make_unique<FakeScript>(failure) : nullptr;
    }

private:
    class FakeScript : public Script
    {
    public:
        explicit FakeScript(std::optional<Error> failure)
            : m_failure(std::move(failure))
        {
        }
        void execute(Done onDone) override
        {
            onDone(m_failure ? Result<Success>(*m_failure) : Result<Success>(Success()));
        }

    private:
        std::optional<Error> m_failure;
    };
};

#pragma once

#include "base/Result.h"

#include <memory>

/// A script that was understood and can be run.
class Script
{
public:
    virtual ~Script() = default;

    /// Runs it; the error says in plain words why it had no effect.
    virtual Result<Success> execute() = 0;
};

/// The desktop's own service for pressing keys on a program's behalf. Main thread only.
class ScriptingService
{
public:
    virtual ~ScriptingService() = default;

    /// Null when the text is no script that the service understands.
    virtual std::unique_ptr<Script> compile(const QString &source) = 0;
};

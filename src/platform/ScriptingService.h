#pragma once

#include "base/Result.h"

#include <functional>
#include <memory>

/// A script that was understood and can be run.
class Script
{
public:
    using Done = std::function<void(const Result<Success> &)>;

    virtual ~Script() = default;

    /// Runs it; may be asked once. Calls `onDone` once, later or before it returns, on the main thread; the
    /// error says in plain words why it had no effect. The script may be destroyed at once: it runs on.
    virtual void execute(Done onDone) = 0;
};

/// The desktop's own service for pressing keys on a program's behalf. Main thread only. Destroying it forgets
/// the scripts that still run: their `onDone` is not called any more.
class ScriptingService
{
public:
    virtual ~ScriptingService() = default;

    /// Null when the text is no script that the service understands.
    virtual std::unique_ptr<Script> compile(const QString &source) = 0;
};

#pragma once

#include "platform/linux/KeyChord.h"

#include <functional>

/// A way to press keys by a service of the desktop. Main thread only; nothing waits. Destroying it forgets
/// what is under way: nothing is called any more.
class KeyPresser
{
public:
    enum class Outcome {
        Done,
        /// The desktop does not offer it. Nothing has been pressed, and another way may be tried. The reason
        /// is what the desktop offers in its place, in plain words: "no such service".
        Unavailable,
        /// It was refused or broke off; no other way is to be tried. The reason is a clause in plain words.
        Failed,
    };
    /// Called once, later or before the call returns.
    using Callback = std::function<void(Outcome outcome, const QString &reason)>;

    virtual ~KeyPresser() = default;

    /// Gets ready to press keys, which may take the user's consent. One at a time.
    virtual void prepare(Callback onDone) = 0;

    /// Presses and releases the keys of a chord; after `prepare` was done. One at a time.
    virtual void press(const KeyChord &chord, Callback onDone) = 0;
};

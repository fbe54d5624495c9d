#pragma once

#include <QString>

#include <functional>

/// Sees to it that one instance of the program runs in a desktop session.
///
/// Life cycle: 1. made by loadSingleInstance(), before the toolkit's application object, which forgets who
/// has started the program; 2. `claim`, once, with an application object but before anything else is set up;
/// 3. while it is `Ours`, `onActivate` is called when the user starts the program again, or when somebody
/// asks the running one to show itself; what is asked before it is set waits until then; 4. destroying it
/// lets the next one in. Main thread only.
class SingleInstance
{
public:
    enum class Claim {
        Ours,       ///< no other instance runs; this one is known from now on
        HandedOver, ///< another one runs, and has been asked to activate itself
        Failed,     ///< another one runs and does not answer
        Unknown,    ///< the session offers no way to find out: run on
    };

    virtual ~SingleInstance() = default;

    /// May wait for the session's own services and for the other instance, two seconds at most: a program
    /// that is just starting keeps nobody waiting.
    [[nodiscard]] virtual Claim claim() = 0;

    /// The user wants to see the program. The token proves to a compositor that it was the user's doing; it
    /// may be empty.
    std::function<void(const QString &activationToken)> onActivate;
};

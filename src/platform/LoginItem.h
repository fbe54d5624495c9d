#pragma once

#include "base/Result.h"

#include <functional>

/// This program among what the desktop starts when the user logs in.
///
/// Life cycle: made; `registerItem` and `unregisterItem` as often as the user likes, in any state: what is so
/// already succeeds. Requests are carried out one after the other, in the order in which they were made, so
/// that the last one decides. Each `onDone` is called once, later or before the request returns, and may
/// destroy the login item. Destroying it forgets the requests that still run: their `onDone` is not called
/// any more, and whether they take effect is open. Main thread only.
///
/// A failure leaves things as they were. Its description is the reason alone, in plain words and one line,
/// such as "the desktop's portal does not answer".
class LoginItem
{
public:
    using Done = std::function<void(const Result<Success> &outcome)>;

    virtual ~LoginItem() = default;

    /// From the next login on the desktop starts this program; where the desktop asks the user first, only
    /// after a yes.
    virtual void registerItem(Done onDone) = 0;
    /// From the next login on it does not.
    virtual void unregisterItem(Done onDone) = 0;
};

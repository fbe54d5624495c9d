#pragma once

#include "platform/LoginItem.h"

/// A desktop that starts no programs at login: every request fails with the reason.
class NullLoginItem : public LoginItem
{
public:
    /// The reason, in plain words.
    explicit NullLoginItem(QString reason)
        : m_reason(std::move(reason))
    {
    }
    void registerItem(Done onDone) override { fail(onDone); }
    void unregisterItem(Done onDone) override { fail(onDone); }

private:
    void fail(const Done &onDone) const
    {
        // The callback may end this object.
        const Error error{m_reason};
        onDone(error);
    }

    QString m_reason;
};

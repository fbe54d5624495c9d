#pragma once

#include "base/Clock.h"

/// A clock that a test sets.
class FixedClock : public Clock
{
public:
    QDateTime now() const override { return m_now; }
    void set(const QDateTime &now) { m_now = now; }
    void advanceBy(qint64 milliseconds) { m_now = m_now.addMSecs(milliseconds); }

private:
    QDateTime m_now = QDateTime(QDate(2026, 3, 1), QTime(9, 5, 7), Qt::UTC);
};

#include "platform/linux/ClipboardPace.h"

#include <algorithm>

void ClipboardPace::progressed(Time now, qint64 bytes)
{
    m_progress = now;
    m_bytes += bytes;
}

void ClipboardPace::holdsBack(Time now)
{
    if (!m_holdsBackSince)
        m_holdsBackSince = now;
}

bool ClipboardPace::hasExpired(Time now) const
{
    if (now - m_progress >= m_limits.noProgress)
        return true;
    const std::chrono::milliseconds earned(m_bytes * 1000 / m_limits.bytesPerSecond);
    if (now - m_start >= m_limits.noProgress + earned)
        return true;
    if (!m_holdsBackSince)
        return false;
    const auto patience = m_makesPicture ? m_limits.heldBack : m_limits.heldBackWithoutProgress;
    return now - std::max(m_progress, *m_holdsBackSince) >= patience ||
        now - *m_holdsBackSince >= m_limits.heldBack;
}

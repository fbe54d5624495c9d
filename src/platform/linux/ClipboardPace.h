#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

/// How much time and room other programs get.
struct ClipboardLimits {
    /// An owner that delivers nothing for so long is given up.
    std::chrono::milliseconds noProgress{5000};
    /// And one that delivers, but slower than this, `noProgress` granted beyond.
    qint64 bytesPerSecond = 256LL * 1024;
    /// A finished content waits so long for an earlier one that makes no progress, pictures aside.
    std::chrono::milliseconds heldBackWithoutProgress{250};
    /// And so long for one that does.
    std::chrono::milliseconds heldBack{2000};
    /// A receiver that takes nothing for so long is dropped.
    std::chrono::milliseconds stalledReceiver{10000};
    /// What a row of the store can hold, with its other fields.
    qint64 target = 1'000'000'000 - 1024 * 1024;
    /// All that is kept only for other programs, together.
    qint64 extras = 32LL * 1024 * 1024;
};

/// Whether a transfer from another program still deserves its time. A value; time is handed in.
class ClipboardPace
{
public:
    using Time = std::chrono::steady_clock::time_point;

    ClipboardPace(const ClipboardLimits &limits, Time now)
        : m_limits(limits)
        , m_start(now)
        , m_progress(now)
    {
    }

    void progressed(Time now, qint64 bytes);
    /// Whether the owner is making a picture, which takes it a while: later contents wait `heldBack` for it
    /// then.
    void setMakesPicture(bool makesPicture) { m_makesPicture = makesPicture; }
    /// A later content is finished and can not be shown before this one. The first call counts.
    void holdsBack(Time now);
    bool hasExpired(Time now) const;

private:
    ClipboardLimits m_limits;
    Time m_start;
    Time m_progress;
    std::optional<Time> m_holdsBackSince;
    qint64 m_bytes = 0;
    bool m_makesPicture = false;
};

#pragma once

#include "platform/linux/ClipboardContent.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ClipboardTargets.h"

#include <deque>
#include <functional>

/// Fetches one content of the clipboard from its owner, target after target: the secret hint, what Larkspool
/// reads, and then what keeps the content alive for other programs. How a target is transferred is the
/// derived class's.
///
/// Life cycle: made when the clipboard has a new content; `follow` with what is to be fetched; `onReadable`
/// once, when everything that Larkspool reads is there (or all of it that will ever be); `onEnded` once, with
/// or without `onReadable` before. It may be destroyed at any time, but not from within its callbacks.
class ContentFetch
{
public:
    using Time = ClipboardPace::Time;

    struct Callbacks {
        std::function<void(ContentFetch &)> onReadable;
        std::function<void(ContentFetch &)> onEnded;
    };

    ContentFetch(const ClipboardLimits &limits, qint64 number, Callbacks callbacks);
    virtual ~ContentFetch() = default;
    ContentFetch(const ContentFetch &) = delete;
    ContentFetch &operator=(const ContentFetch &) = delete;

    qint64 number() const { return m_number; }
    const ClipboardContent &content() const { return m_content; }
    bool isReadable() const { return m_isReadable; }
    bool hasEnded() const { return m_step == Step::Ended; }
    /// Whether it ended because nothing more was to be fetched.
    bool isComplete() const { return m_isComplete; }

    /// Ends it when it has used up its time.
    void check(Time now, bool holdsBackOthers);

protected:
    enum class Outcome {
        Delivered,
        Refused,  ///< the owner does not have the target, or its answer makes no sense
        TooLarge, ///< more than the limit
    };
    struct Transfer {
        Outcome outcome = Outcome::Refused;
        QByteArray target; ///< says how to read the bytes
        QByteArray bytes;
        qint64 size = 0; ///< of one that is too large, as far as is known
    };

    /// Starts the transfer of a target, of at most so many bytes, which ends with `accept`.
    virtual void request(const QByteArray &target, qint64 limit) = 0;
    /// Lets go of a transfer that was too large, before the next `request`.
    virtual void giveUpTransfer() {}

    void follow(const clipboard::FetchPlan &plan);
    void accept(const Transfer &transfer);
    void progressed(qint64 bytes);

    /// Nothing more can be asked of the owner; a transfer under way may still come.
    void supersede() { m_isSuperseded = true; }
    bool isSuperseded() const { return m_isSuperseded; }
    /// Whether nothing of the content itself has been asked for yet.
    bool isBeginning() const { return m_step == Step::Start || m_step == Step::Hint; }
    /// Whether the transfer at hand is of a text that can be had in other encodings, too.
    bool hasOtherTexts() const;
    void end(bool isComplete);

private:
    enum class Step { Start, Hint, Text, Other, Extra, Ended };
    struct Wanted {
        Step step;
        QByteArray target;
    };

    void next();
    void acceptHint(const Transfer &transfer);
    void acceptBytes(const Transfer &transfer);
    void skipTooLarge(qint64 size);
    void skipOtherTexts();
    void becomeReadable();

    const ClipboardLimits m_limits;
    const qint64 m_number;
    const Callbacks m_callbacks;
    ClipboardPace m_pace;
    Step m_step = Step::Start;
    std::deque<Wanted> m_wanted;
    ClipboardContent m_content;
    qint64 m_extraBytes = 0;
    bool m_isSuperseded = false;
    bool m_isReadable = false;
    bool m_isComplete = false;
    bool m_hasSkipped = false;
};

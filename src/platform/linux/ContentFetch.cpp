#include "platform/linux/ContentFetch.h"

#include "base/Console.h"

#include <utility>

namespace
{

constexpr qint64 LargestHint = 1024;

ClipboardPace::Time now()
{
    return std::chrono::steady_clock::now();
}

} // namespace

ContentFetch::ContentFetch(const ClipboardLimits &limits, qint64 number, Callbacks callbacks)
    : m_limits(limits)
    , m_number(number)
    , m_callbacks(std::move(callbacks))
    , m_pace(limits, now())
{
}

void ContentFetch::check(Time now, bool holdsBackOthers)
{
    if (hasEnded())
        return;
    if (holdsBackOthers)
        m_pace.holdsBack(now);
    if (m_pace.hasExpired(now))
        end(false);
}

void ContentFetch::progressed(qint64 bytes)
{
    m_pace.progressed(now(), bytes);
}

void ContentFetch::follow(const clipboard::FetchPlan &plan)
{
    if (plan.secretHint)
        m_wanted.push_back({Step::Hint, *plan.secretHint});
    const auto add = [this](Step step, const QByteArrayList &targets) {
        for (const QByteArray &target : targets)
            m_wanted.push_back({step, target});
    };
    add(Step::Text, plan.texts);
    add(Step::Other, plan.others);
    add(Step::Extra, plan.extras);
    next();
}

void ContentFetch::accept(const Transfer &transfer)
{
    switch (m_step) {
    case Step::Hint:
        acceptHint(transfer);
        break;
    case Step::Text:
    case Step::Other:
    case Step::Extra:
        acceptBytes(transfer);
        break;
    case Step::Start:
    case Step::Ended:
        break;
    }
}

/// A hint that can not be read is one all the same.
void ContentFetch::acceptHint(const Transfer &transfer)
{
    if (transfer.outcome == Outcome::Delivered && !clipboard::isSecret(transfer.bytes)) {
        next();
        return;
    }
    m_content.isSecret = true;
    end(true);
}

void ContentFetch::acceptBytes(const Transfer &transfer)
{
    if (transfer.outcome == Outcome::TooLarge) {
        skipTooLarge(transfer.size);
    } else if (transfer.outcome == Outcome::Delivered) {
        m_content.insert(transfer.target, transfer.bytes);
        if (m_step == Step::Text)
            skipOtherTexts();
        if (m_step == Step::Extra)
            m_extraBytes += transfer.bytes.size();
    }
    next();
}

void ContentFetch::skipTooLarge(qint64 size)
{
    giveUpTransfer();
    if (m_step == Step::Extra)
        return;
    // The other encodings of a text are as large.
    if (m_step == Step::Text)
        skipOtherTexts();
    if (!m_hasSkipped)
        consoleLine(QStringLiteral("[Larkspool] Skipped a copy of %1 bytes: larger than the store can hold")
                        .arg(size));
    m_hasSkipped = true;
}

bool ContentFetch::hasOtherTexts() const
{
    return m_step == Step::Text && !m_wanted.empty() && m_wanted.front().step == Step::Text;
}

void ContentFetch::skipOtherTexts()
{
    std::erase_if(m_wanted, [](const Wanted &wanted) { return wanted.step == Step::Text; });
}

void ContentFetch::next()
{
    const bool isReadComplete = m_wanted.empty() || m_wanted.front().step == Step::Extra;
    if (isReadComplete && !m_isReadable && !(m_hasSkipped && m_content.isEmpty()))
        becomeReadable();
    const bool isUseless = isReadComplete && !m_isReadable;
    if (m_isSuperseded || m_wanted.empty() || isUseless) {
        end(m_wanted.empty() || isUseless);
        return;
    }
    const Wanted wanted = m_wanted.front();
    m_wanted.pop_front();
    m_step = wanted.step;
    m_pace.setMakesPicture(wanted.target.startsWith("image/"));
    const bool isExtra = m_step == Step::Extra;
    const qint64 limit = isExtra ? m_limits.extras - m_extraBytes : m_limits.target;
    request(wanted.target, m_step == Step::Hint ? LargestHint : limit);
}

void ContentFetch::becomeReadable()
{
    m_isReadable = true;
    // What comes now holds nobody back, and has its own time.
    m_pace = ClipboardPace(m_limits, now());
    m_callbacks.onReadable(*this);
}

void ContentFetch::end(bool isComplete)
{
    const Step step = std::exchange(m_step, Step::Ended);
    m_isComplete = isComplete;
    m_wanted.clear();
    // An owner that marks its content, and is gone before it says how, meant something by it.
    if (step == Step::Hint && !isComplete)
        m_content.isSecret = true;
    if (!m_isReadable && (m_content.isSecret || !m_content.isEmpty()))
        becomeReadable();
    m_callbacks.onEnded(*this);
}

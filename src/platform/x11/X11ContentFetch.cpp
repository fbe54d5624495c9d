#include "platform/x11/X11ContentFetch.h"

#include "base/Console.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr qint64 LargestTargetList = 64LL * 1024;
constexpr qint64 LargestHint = 1024;

ClipboardPace::Time now()
{
    return std::chrono::steady_clock::now();
}

std::vector<xcb_atom_t> atomsIn(const QByteArray &bytes)
{
    std::vector<xcb_atom_t> atoms;
    for (qsizetype at = 0; at + qsizetype(sizeof(xcb_atom_t)) <= bytes.size(); at += sizeof(xcb_atom_t)) {
        xcb_atom_t atom = XCB_ATOM_NONE;
        std::memcpy(&atom, bytes.constData() + at, sizeof atom);
        atoms.push_back(atom);
    }
    return atoms;
}

} // namespace

X11ContentFetch::X11ContentFetch(X11Connection &connection, X11RetiredWindows &retired,
    const ClipboardLimits &limits, qint64 number, Callbacks callbacks)
    : m_connection(connection)
    , m_retired(retired)
    , m_limits(limits)
    , m_number(number)
    , m_callbacks(std::move(callbacks))
    , m_pace(limits, now())
{
    makeReceiver();
}

void X11ContentFetch::makeReceiver()
{
    m_receivers.push_back(std::make_unique<X11SelectionReceiver>(m_connection, m_retired,
        X11SelectionReceiver::Callbacks{[this](qint64 bytes) { m_pace.progressed(now(), bytes); },
            [this](const X11SelectionReceiver::Result &result) { accept(result); }}));
}

void X11ContentFetch::start(xcb_timestamp_t time)
{
    m_time = time;
    ask(m_connection.atom("TARGETS"), LargestTargetList);
}

void X11ContentFetch::ownerChanged(uint32_t sequence)
{
    if (hasEnded())
        return;
    m_isSuperseded = true;
    const bool isBeginning = m_step == Step::Targets || m_step == Step::Hint;
    // A request that the server got after the change went to the new owner: its answer is another content's.
    if (isBeginning || m_isReadable || m_receivers.back()->isUnansweredSince(sequence))
        end(false);
}

void X11ContentFetch::ownerIsGone()
{
    if (hasEnded())
        return;
    m_isSuperseded = true;
    if (!m_receivers.back()->hasEverything())
        end(false);
}

void X11ContentFetch::check(Time now, bool holdsBackOthers)
{
    if (hasEnded())
        return;
    if (holdsBackOthers)
        m_pace.holdsBack(now);
    if (m_pace.hasExpired(now))
        end(false);
}

void X11ContentFetch::handle(const xcb_selection_notify_event_t &event)
{
    if (!hasEnded())
        m_receivers.back()->handle(event);
}

void X11ContentFetch::handle(const xcb_property_notify_event_t &event)
{
    if (!hasEnded())
        m_receivers.back()->handle(event);
}

void X11ContentFetch::ask(xcb_atom_t target, qint64 limit)
{
    m_receivers.back()->request(m_connection.atom("CLIPBOARD"), target, m_time, limit);
}

void X11ContentFetch::accept(const X11SelectionReceiver::Result &result)
{
    if (hasEnded())
        return;
    switch (m_step) {
    case Step::Targets:
        acceptTargets(result);
        break;
    case Step::Hint:
        acceptHint(result);
        break;
    case Step::Text:
    case Step::Other:
    case Step::Extra:
        acceptBytes(result);
        break;
    case Step::Ended:
        break;
    }
}

void X11ContentFetch::acceptTargets(const X11SelectionReceiver::Result &result)
{
    // An owner from before the ICCCM knows no list of targets, but may well have a text.
    if (result.outcome != X11SelectionReceiver::Outcome::Delivered || result.format != 32) {
        follow(clipboard::fetchPlanForSilentOwner());
        return;
    }
    QByteArrayList offered;
    for (const xcb_atom_t atom : atomsIn(result.bytes)) {
        const QByteArray name = m_connection.atomName(atom);
        if (!name.isEmpty())
            offered.append(name);
    }
    follow(clipboard::fetchPlan(offered));
}

void X11ContentFetch::follow(const clipboard::FetchPlan &plan)
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

/// A hint that can not be read is one all the same.
void X11ContentFetch::acceptHint(const X11SelectionReceiver::Result &result)
{
    if (result.outcome == X11SelectionReceiver::Outcome::Delivered && !clipboard::isSecret(result.bytes)) {
        next();
        return;
    }
    m_content.isSecret = true;
    end(true);
}

void X11ContentFetch::acceptBytes(const X11SelectionReceiver::Result &result)
{
    using Outcome = X11SelectionReceiver::Outcome;
    if (result.outcome == Outcome::TooLarge) {
        skipTooLarge(result.size);
    } else if (result.outcome == Outcome::Delivered && result.format != 32) {
        // Some owners answer STRING with UTF-8 and say so.
        const bool isUtf8 =
            m_target == clipboard::Latin1String && result.type == m_connection.atom(clipboard::Utf8String);
        m_content.insert(isUtf8 ? QByteArray(clipboard::Utf8String) : m_target, result.bytes);
        if (m_step == Step::Text)
            std::erase_if(m_wanted, [](const Wanted &wanted) { return wanted.step == Step::Text; });
        if (m_step == Step::Extra)
            m_extraBytes += result.bytes.size();
    }
    next();
}

void X11ContentFetch::skipTooLarge(qint64 size)
{
    makeReceiver();
    if (m_step == Step::Extra)
        return;
    // The other encodings of a text are as large.
    if (m_step == Step::Text)
        std::erase_if(m_wanted, [](const Wanted &wanted) { return wanted.step == Step::Text; });
    if (!m_hasSkipped)
        consoleLine(QStringLiteral("[Larkspool] Skipped a copy of %1 bytes: larger than the store can hold")
                        .arg(size));
    m_hasSkipped = true;
}

void X11ContentFetch::next()
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
    m_target = wanted.target;
    m_pace.setMakesPicture(m_target.startsWith("image/"));
    const bool isExtra = m_step == Step::Extra;
    const qint64 limit = isExtra ? m_limits.extras - m_extraBytes : m_limits.target;
    ask(m_connection.atom(m_target), m_step == Step::Hint ? LargestHint : limit);
}

void X11ContentFetch::becomeReadable()
{
    m_isReadable = true;
    // What comes now holds nobody back, and has its own time.
    m_pace = ClipboardPace(m_limits, now());
    m_callbacks.onReadable(*this);
}

void X11ContentFetch::end(bool isComplete)
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

#include "platform/linux/KeystrokeService.h"

#include <utility>

namespace
{

constexpr std::chrono::milliseconds RoundTime{20};
constexpr int RoundLimit = 100; // 2 s

bool isPaste(const Keystroke &keystroke)
{
    Keystroke paste;
    paste.character = QLatin1Char('v');
    paste.isCommandDown = true;
    return keystroke == paste;
}

PasteChord pasteChordOf(const RunningApplication *application)
{
    if (!application)
        return PasteChord::ControlV;
    return pasteChord(application->bundleIdentifier().value_or(QString()),
        executableName(application->processIdentifier()));
}

} // namespace

class KeystrokeService::KeystrokeScript : public Script
{
public:
    KeystrokeScript(Keystroke keystroke, std::function<void(Job)> run)
        : m_keystroke(keystroke)
        , m_run(std::move(run))
    {
    }

    void execute(Done onDone) override { m_run({m_keystroke, std::move(onDone)}); }

private:
    Keystroke m_keystroke;
    std::function<void(Job)> m_run;
};

KeystrokeService::KeystrokeService(
    const Workspace &workspace, MainQueue &queue, std::vector<std::unique_ptr<KeyPresser>> pressers)
    : m_workspace(workspace)
    , m_queue(queue)
    , m_pressers(std::move(pressers))
{
}

KeystrokeService::~KeystrokeService() = default;

std::unique_ptr<Script> KeystrokeService::compile(const QString &source)
{
    const auto keystroke = keystrokeFromScript(source);
    if (!keystroke)
        return nullptr;
    return std::make_unique<KeystrokeScript>(
        *keystroke, m_lifetime.guard([this](Job job) { run(std::move(job)); }));
}

void KeystrokeService::run(Job job)
{
    m_jobs.push_back(std::move(job));
    if (m_jobs.size() == 1)
        startNext();
}

void KeystrokeService::startNext()
{
    const Keystroke keystroke = m_jobs.front().keystroke;
    m_target = m_workspace.frontmostApplication();
    m_reasons.clear();
    m_chord = keyChord(keystroke);
    if (isPaste(keystroke)) {
        const PasteChord chord = pasteChordOf(m_target.get());
        if (chord == PasteChord::ShiftInsert) {
            finish(Error{QStringLiteral("the program in front pastes the selection, not the clipboard")});
            return;
        }
        m_chord = keyChord(chord);
    }
    tryPresser(0);
}

void KeystrokeService::tryPresser(size_t index)
{
    if (index == m_pressers.size()) {
        finish(Error{QStringLiteral("the desktop offers ") + m_reasons.join(QStringLiteral(", and "))});
        return;
    }
    m_pressers[index]->prepare([this, index](KeyPresser::Outcome outcome, const QString &reason) {
        if (outcome == KeyPresser::Outcome::Done)
            awaitTarget(index, RoundLimit);
        else
            failed(index, outcome, reason);
    });
}

void KeystrokeService::awaitTarget(size_t index, int roundsLeft)
{
    if (!m_target || m_target->isActive())
        press(index);
    else if (roundsLeft == 0)
        finish(Error{QStringLiteral("the program that was in front has not come back there")});
    else
        m_queue.asyncAfter(
            RoundTime, m_lifetime.guard([this, index, roundsLeft] { awaitTarget(index, roundsLeft - 1); }));
}

void KeystrokeService::press(size_t index)
{
    m_pressers[index]->press(m_chord, [this, index](KeyPresser::Outcome outcome, const QString &reason) {
        if (outcome == KeyPresser::Outcome::Done)
            finish(Success());
        else
            failed(index, outcome, reason);
    });
}

void KeystrokeService::failed(size_t index, KeyPresser::Outcome outcome, const QString &reason)
{
    if (outcome != KeyPresser::Outcome::Unavailable) {
        finish(Error{reason});
        return;
    }
    m_reasons.append(reason);
    tryPresser(index + 1);
}

void KeystrokeService::finish(const Result<Success> &outcome)
{
    const Script::Done onDone = std::move(m_jobs.front().onDone);
    m_target.reset();
    // The callback may run another script, or end this service.
    m_queue.async(m_lifetime.guard([this] {
        m_jobs.pop_front();
        if (!m_jobs.empty())
            startNext();
    }));
    onDone(outcome);
}

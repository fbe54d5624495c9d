#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "platform/ScriptingService.h"
#include "platform/Workspace.h"
#include "platform/linux/KeyPresser.h"

#include <QStringList>

#include <deque>
#include <memory>
#include <vector>

/// Runs scripts that press one key (keystrokeFromScript) with whatever service of the desktop takes keys.
///
/// "v" with the command key alone means "paste": the chord is the one with which the program in front pastes.
/// Programs that paste the selection instead of the clipboard get nothing, since it would be something else.
///
/// The services are tried in order, until one presses the keys, or refuses. While one gets ready the desktop
/// may have asked the user something, so the keys wait until the program that was in front is there again,
/// for 2 s. Scripts run one after the other.
class KeystrokeService : public ScriptingService
{
public:
    /// The references must outlive it.
    KeystrokeService(
        const Workspace &workspace, MainQueue &queue, std::vector<std::unique_ptr<KeyPresser>> pressers);
    ~KeystrokeService() override;

    std::unique_ptr<Script> compile(const QString &source) override;

private:
    class KeystrokeScript;
    struct Job {
        Keystroke keystroke;
        Script::Done onDone;
    };

    void run(Job job);
    void startNext();
    void tryPresser(size_t index);
    void awaitTarget(size_t index, int roundsLeft);
    void press(size_t index);
    void failed(size_t index, KeyPresser::Outcome outcome, const QString &reason);
    void finish(const Result<Success> &outcome);

    const Workspace &m_workspace;
    MainQueue &m_queue;
    std::vector<std::unique_ptr<KeyPresser>> m_pressers;
    std::deque<Job> m_jobs; ///< the first is under way
    std::shared_ptr<RunningApplication> m_target;
    KeyChord m_chord;
    QStringList m_reasons; ///< why services that were tried are none
    Lifetime m_lifetime;
};

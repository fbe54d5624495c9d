#include "platform/linux/KeystrokeService.h"

#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"

#include <gtest/gtest.h>

namespace
{

using Outcome = KeyPresser::Outcome;
using Outcomes = std::vector<std::string>;
using std::chrono::milliseconds;

/// A presser that does as the test says, when the test says so.
class FakePresser : public KeyPresser
{
public:
    Callback onPrepared;
    Callback onPressed;
    std::vector<KeyChord> chords;
    int preparedCount = 0;

    void prepare(Callback onDone) override
    {
        ++preparedCount;
        onPrepared = std::move(onDone);
    }
    void press(const KeyChord &chord, Callback onDone) override
    {
        chords.push_back(chord);
        onPressed = std::move(onDone);
    }

    void prepared(Outcome outcome, const char *reason = "")
    {
        std::exchange(onPrepared, nullptr)(outcome, QString::fromLatin1(reason));
    }
    void pressed(Outcome outcome, const char *reason = "")
    {
        std::exchange(onPressed, nullptr)(outcome, QString::fromLatin1(reason));
    }
};

/// Two pressers, and a program in front.
class KeystrokeServiceTest : public ::testing::Test
{
protected:
    KeystrokeServiceTest() { bringToFront("org.example.Editor"); }

    void bringToFront(const char *identifier)
    {
        m_program = m_workspace.bringToFront(QStringLiteral("Program"), QString::fromLatin1(identifier), -1);
    }

    static QString script(const char *press)
    {
        return QStringLiteral("tell application \"System Events\"\n    %1\nend tell")
            .arg(QString::fromLatin1(press));
    }

    void run(const char *press = "keystroke \"v\" using command down")
    {
        const auto compiled = m_service->compile(script(press));
        ASSERT_NE(compiled, nullptr);
        compiled->execute([this](const Result<Success> &outcome) {
            m_outcomes.push_back(outcome ? "done" : outcome.error().description.toStdString());
        });
    }

    void pressByTheFirst()
    {
        m_first->prepared(Outcome::Done);
        m_first->pressed(Outcome::Done);
        m_queue.drain();
    }

    FakeWorkspace m_workspace;
    ManualMainQueue m_queue;
    std::shared_ptr<FakeWorkspace::Application> m_program;
    FakePresser *m_first = nullptr;
    FakePresser *m_second = nullptr;
    std::unique_ptr<KeystrokeService> m_service = makeService();
    Outcomes m_outcomes;

private:
    std::unique_ptr<KeystrokeService> makeService()
    {
        auto first = std::make_unique<FakePresser>();
        auto second = std::make_unique<FakePresser>();
        m_first = first.get();
        m_second = second.get();
        std::vector<std::unique_ptr<KeyPresser>> pressers;
        pressers.push_back(std::move(first));
        pressers.push_back(std::move(second));
        return std::make_unique<KeystrokeService>(m_workspace, m_queue, std::move(pressers));
    }
};

TEST_F(KeystrokeServiceTest, CompilesNothingButKeystrokes)
{
    EXPECT_NE(m_service->compile(script("keystroke \"v\" using command down")), nullptr);
    EXPECT_EQ(m_service->compile(script("key code 9")), nullptr);
    EXPECT_EQ(m_service->compile(QString()), nullptr);
}

TEST_F(KeystrokeServiceTest, PressesTheChordOfTheProgramInFrontForPaste)
{
    run();
    pressByTheFirst();
    bringToFront("org.gnome.Terminal");
    run();
    pressByTheFirst();
    m_workspace.leaveNobodyInFront();
    run();
    pressByTheFirst();
    const std::vector<KeyChord> expected{
        keyChord(PasteChord::ControlV), keyChord(PasteChord::ControlShiftV), keyChord(PasteChord::ControlV)};
    EXPECT_EQ(m_first->chords, expected);
    EXPECT_EQ(m_outcomes, (Outcomes{"done", "done", "done"}));
    EXPECT_EQ(m_second->preparedCount, 0);
}

TEST_F(KeystrokeServiceTest, PressesOtherKeystrokesAsTheyAre)
{
    bringToFront("org.gnome.Terminal");
    run("keystroke \"v\" using {command down, option down}");
    pressByTheFirst();
    run("keystroke \"x\"");
    pressByTheFirst();
    const std::vector<KeyChord> expected{{{KeyModifier::Control, KeyModifier::Alt}, 'v'}, {{}, 'x'}};
    EXPECT_EQ(m_first->chords, expected);
}

TEST_F(KeystrokeServiceTest, PressesNothingWhereTheSelectionWouldBePasted)
{
    bringToFront("XTerm");
    run();
    EXPECT_EQ(m_first->preparedCount, 0);
    EXPECT_EQ(m_outcomes, (Outcomes{"the program in front pastes the selection, not the clipboard"}));
}

TEST_F(KeystrokeServiceTest, TriesTheNextServiceWhereOneIsMissing)
{
    run();
    m_first->prepared(Outcome::Unavailable, "no portal");
    ASSERT_EQ(m_second->preparedCount, 1);
    m_second->prepared(Outcome::Done);
    m_second->pressed(Outcome::Done);
    EXPECT_EQ(m_outcomes, (Outcomes{"done"}));
    EXPECT_TRUE(m_first->chords.empty());
}

TEST_F(KeystrokeServiceTest, TriesTheNextServiceWhereKeysAreNotTakenAtAll)
{
    run();
    m_first->prepared(Outcome::Done);
    m_first->pressed(Outcome::Unavailable, "a portal without keys");
    m_second->prepared(Outcome::Done);
    m_second->pressed(Outcome::Done);
    EXPECT_EQ(m_outcomes, (Outcomes{"done"}));
}

TEST_F(KeystrokeServiceTest, SaysWhatTheDesktopDoesNotOffer)
{
    run();
    m_first->prepared(Outcome::Unavailable, "no portal");
    m_second->prepared(Outcome::Unavailable, "no other service");
    EXPECT_EQ(m_outcomes, (Outcomes{"the desktop offers no portal, and no other service"}));
}

TEST_F(KeystrokeServiceTest, TakesARefusalForAnAnswer)
{
    run();
    m_first->prepared(Outcome::Failed, "the user said no");
    EXPECT_EQ(m_second->preparedCount, 0);
    EXPECT_EQ(m_outcomes, (Outcomes{"the user said no"}));
    m_queue.drain();
    run();
    m_first->prepared(Outcome::Done);
    m_first->pressed(Outcome::Failed, "it broke off");
    EXPECT_EQ(m_second->preparedCount, 0);
    EXPECT_EQ(m_outcomes.back(), "it broke off");
}

TEST_F(KeystrokeServiceTest, WaitsUntilTheProgramIsInFrontAgain)
{
    run();
    const auto program = m_program;
    bringToFront("org.example.Question");
    m_first->prepared(Outcome::Done);
    m_queue.advanceBy(milliseconds(1980));
    EXPECT_TRUE(m_first->chords.empty());
    m_workspace.bringToFront(program);
    m_queue.advanceBy(milliseconds(20));
    EXPECT_EQ(m_first->chords.size(), 1U);
}

TEST_F(KeystrokeServiceTest, PressesNothingInAnotherProgram)
{
    run();
    bringToFront("org.example.Other");
    m_first->prepared(Outcome::Done);
    m_queue.advanceBy(milliseconds(2000));
    EXPECT_TRUE(m_first->chords.empty());
    EXPECT_EQ(m_outcomes, (Outcomes{"the program that was in front has not come back there"}));
}

TEST_F(KeystrokeServiceTest, RunsScriptsOneAfterTheOther)
{
    run();
    run();
    EXPECT_EQ(m_first->preparedCount, 1);
    pressByTheFirst();
    EXPECT_EQ(m_first->preparedCount, 2);
    pressByTheFirst();
    EXPECT_EQ(m_outcomes, (Outcomes{"done", "done"}));
}

TEST_F(KeystrokeServiceTest, RunsAScriptThatIsStartedWhenAnotherIsDone)
{
    const auto compiled = m_service->compile(script("keystroke \"v\" using command down"));
    compiled->execute([this](const Result<Success> &) { run(); });
    m_first->prepared(Outcome::Done);
    m_first->pressed(Outcome::Done);
    m_queue.drain();
    pressByTheFirst();
    EXPECT_EQ(m_outcomes, (Outcomes{"done"}));
}

TEST_F(KeystrokeServiceTest, ForgetsItsScriptsWhenItEnds)
{
    const auto compiled = m_service->compile(script("keystroke \"v\" using command down"));
    run();
    m_first->prepared(Outcome::Done);
    run();
    m_service.reset();
    m_queue.advanceBy(milliseconds(5000));
    compiled->execute([](const Result<Success> &) { ADD_FAILURE() << "nobody is left to run it"; });
    EXPECT_TRUE(m_outcomes.empty());
}

TEST_F(KeystrokeServiceTest, MayEndWhenAScriptIsDone)
{
    const auto compiled = m_service->compile(script("keystroke \"v\" using command down"));
    compiled->execute([this](const Result<Success> &) { m_service.reset(); });
    m_first->prepared(Outcome::Unavailable, "no portal");
    const auto callback = std::exchange(m_second->onPrepared, nullptr);
    callback(Outcome::Unavailable, QStringLiteral("no other service"));
    EXPECT_EQ(m_service, nullptr);
    m_queue.advanceBy(milliseconds(5000));
}

} // namespace

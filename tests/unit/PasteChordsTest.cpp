#include "platform/linux/PasteChords.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace
{

PasteChord chord(const char *identifier, const char *executable = "")
{
    return pasteChord(QString::fromLatin1(identifier), QString::fromLatin1(executable));
}

TEST(PasteChords, AreControlVForMostPrograms)
{
    EXPECT_EQ(chord("org.mozilla.firefox", "firefox"), PasteChord::ControlV);
    EXPECT_EQ(chord("", ""), PasteChord::ControlV);
}

TEST(PasteChords, TakeShiftInTerminals)
{
    for (const char *const terminal : {"xfce4-terminal", "org.gnome.Terminal", "gnome-terminal-server",
             "mate-terminal", "lxterminal", "terminator", "com.gexperts.Tilix", "org.gnome.Console",
             "org.kde.konsole", "qterminal", "Alacritty", "kitty", "foot", "org.wezfurlong.wezterm",
             "st-256color", "com.mitchellh.ghostty", "org.gnome.Ptyxis"})
        EXPECT_EQ(chord(terminal), PasteChord::ControlShiftV) << terminal;
}

TEST(PasteChords, AreShiftInsertWhereNothingElseIsKnown)
{
    for (const char *const terminal : {"XTerm", "debian-xterm", "debian-uxterm", "URxvt", "rxvt", "UXTerm"})
        EXPECT_EQ(chord(terminal), PasteChord::ShiftInsert) << terminal;
}

TEST(PasteChords, KnowATerminalByItsExecutableWhenItsClassIsChanged)
{
    EXPECT_EQ(chord("Logs", "xterm"), PasteChord::ShiftInsert);
    EXPECT_EQ(chord("dropdown", "alacritty"), PasteChord::ControlShiftV);
}

TEST(PasteChords, BelieveTheIdentifierBeforeTheExecutable)
{
    EXPECT_EQ(chord("org.kde.konsole", "xterm"), PasteChord::ControlShiftV);
}

TEST(PasteChords, DoNotTakeAPartOfANameForTheName)
{
    EXPECT_EQ(chord("org.example.kitty-cards", "footnote"), PasteChord::ControlV);
}

TEST(ExecutableName, IsThatOfTheProcess)
{
    const QString own = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    EXPECT_EQ(executableName(QCoreApplication::applicationPid()), own);
}

TEST(ExecutableName, IsEmptyForAProcessThatIsNotThere)
{
    EXPECT_EQ(executableName(-1), QString());
    EXPECT_EQ(executableName(0), QString());
    EXPECT_EQ(executableName(99999999), QString());
}

} // namespace

#include "contract/X11PasteboardFixture.h"

#include "support/ChildProgram.h"

#include <QStandardPaths>

namespace
{

class X11PasteboardPrograms : public X11PasteboardFixture
{
protected:
    /// Runs the program, which writes nothing or reads nothing. The pasteboard works meanwhile, on its own
    /// thread.
    static QByteArray run(const QByteArrayList &commandLine, const QByteArray &input = {})
    {
        // Tools that go on in the background keep their output open.
        const auto output = input.isEmpty() ? ChildProgram::Output::Piped : ChildProgram::Output::Discarded;
        ChildProgram program(commandLine, output);
        program.writeAll(input);
        const QByteArray written = program.readAll();
        EXPECT_EQ(program.waitForExit(), 0) << commandLine.join(' ').constData();
        return written;
    }

    static bool isMissing(const QString &program)
    {
        return QStandardPaths::findExecutable(program).isEmpty();
    }
};

} // namespace

TEST_F(X11PasteboardPrograms, XclipCopiesAndPastes)
{
    if (isMissing(QStringLiteral("xclip")))
        GTEST_SKIP() << "xclip is not installed";
    const QByteArrayList clipboard = {"xclip", "-selection", "clipboard"};
    open();
    run(clipboard + QByteArrayList({"-in"}), "from xclip");
    EXPECT_EQ(nextText(), "from xclip");
    pasteboard().clearContents();
    pasteboard().setString("to xclip: grüße");
    ASSERT_TRUE(advances());
    ASSERT_TRUE(waitUntil([&] { return run(clipboard + QByteArrayList({"-out"})) == "to xclip: grüße"; }));
}

TEST_F(X11PasteboardPrograms, XselCopiesAndPastes)
{
    if (isMissing(QStringLiteral("xsel")))
        GTEST_SKIP() << "xsel is not installed";
    open();
    run({"xsel", "-b", "-i"}, "from xsel");
    EXPECT_EQ(nextText(), "from xsel");
    pasteboard().clearContents();
    pasteboard().setString("to xsel: grüße");
    ASSERT_TRUE(advances());
    ASSERT_TRUE(waitUntil([&] { return run({"xsel", "-b", "-o"}) == "to xsel: grüße"; }));
}

TEST_F(X11PasteboardPrograms, TwentyMegabytesGoThroughXclipBothWays)
{
    if (isMissing(QStringLiteral("xclip")))
        GTEST_SKIP() << "xclip is not installed";
    const QByteArrayList clipboard = {"xclip", "-selection", "clipboard"};
    const QByteArray text = QByteArray("0123456789abcdef").repeated(20 * 65536);
    open();
    run(clipboard + QByteArrayList({"-in"}), text);
    ASSERT_TRUE(advances());
    EXPECT_TRUE(this->text() == text);
    pasteboard().clearContents();
    pasteboard().setString(text + "!");
    ASSERT_TRUE(waitUntil([&] { return run(clipboard + QByteArrayList({"-out"})) == text + "!"; }));
}

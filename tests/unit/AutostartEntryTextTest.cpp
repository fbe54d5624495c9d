#include "platform/linux/AutostartEntryText.h"

#include <gtest/gtest.h>

namespace
{

const QString Program = QStringLiteral("/usr/bin/larkspool");

const QByteArray Fresh = "[Desktop Entry]\n"
                         "Type=Application\n"
                         "Version=1.4\n"
                         "Name=Larkspool\n"
                         "Comment=Remembers what you copy\n"
                         "Comment[de]=Merkt sich, was kopiert wird\n"
                         "Exec=/usr/bin/larkspool\n"
                         "TryExec=/usr/bin/larkspool\n"
                         "Icon=org.larkspool.Larkspool\n"
                         "Terminal=false\n"
                         "StartupNotify=false\n"
                         "NoDisplay=false\n"
                         "X-GNOME-Autostart-enabled=true\n";

QByteArray started(const QByteArray &existing)
{
    const auto text = autostartentry::started(existing, Program);
    return text ? text.value() : QByteArray();
}

/// What stands in the file for the path, or "(none)".
QByteArray execOf(const char *path)
{
    const auto value = autostartentry::execValue(QString::fromUtf8(path));
    return value ? value.value() : "(none)";
}

TEST(AutostartEntryTextTest, ExecQuotesAndEscapesThePathOfTheProgram)
{
    struct Row {
        const char *path;
        const char *value;
    };
    const Row table[]{
        {"/usr/bin/larkspool", "/usr/bin/larkspool"},
        {"/opt/lärche-1.0_b,c/larkspool", "/opt/lärche-1.0_b,c/larkspool"},
        {"/opt/my apps/larkspool", R"("/opt/my apps/larkspool")"},
        {"/opt/it's/larkspool", R"("/opt/it's/larkspool")"},
        {"/opt/a;b&(c)/larkspool", R"("/opt/a;b&(c)/larkspool")"},
        {"/opt/~#*?<>|/larkspool", R"("/opt/~#*?<>|/larkspool")"},
        // Escaped inside the quotes, and the escapes again as in every string.
        {"/opt/$HOME/larkspool", R"("/opt/\\$HOME/larkspool")"},
        {"/opt/`id`/larkspool", R"("/opt/\\`id\\`/larkspool")"},
        {R"(/opt/a"b/larkspool)", R"("/opt/a\\"b/larkspool")"},
        {R"(/opt/a\b/larkspool)", R"("/opt/a\\\\b/larkspool")"},
        // Otherwise a field code.
        {"/opt/100%/larkspool", "/opt/100%%/larkspool"},
        {"/opt/a %u/larkspool", R"("/opt/a %%u/larkspool")"},
    };
    for (const Row &row : table)
        EXPECT_EQ(execOf(row.path).toStdString(), row.value) << row.path;
}

TEST(AutostartEntryTextTest, ExecHoldsNoPathThatIsRelativeOrHasAnEqualsSignOrControlCharacters)
{
    for (const char *const path : {"", "larkspool", "./larkspool", "/opt/a=b/larkspool",
             "/opt/a\nb/larkspool", "/opt/a\tb/larkspool", "/opt/a\x7f/larkspool", "/opt/a\xff/larkspool"})
        EXPECT_EQ(execOf(path), "(none)") << path;
}

TEST(AutostartEntryTextTest, APathThatExecCannotHoldIsNamedInOneLine)
{
    const auto text = autostartentry::started({}, QStringLiteral("/opt/a=\nb"));
    ASSERT_FALSE(text);
    EXPECT_EQ(text.error().description,
        QStringLiteral("an autostart entry cannot hold the program's path /opt/a= b"));
}

TEST(AutostartEntryTextTest, TryExecIsEscapedAndNotQuoted)
{
    const auto text = autostartentry::started({}, QStringLiteral("/opt/a b\\c%/larkspool"));
    ASSERT_TRUE(text);
    EXPECT_TRUE(text.value().contains("\nTryExec=/opt/a b\\\\c%/larkspool\n")) << text.value().toStdString();
}

TEST(AutostartEntryTextTest, WhatDescribesNothingIsReplacedByAWholeEntry)
{
    for (const QByteArray existing : {"", "\n\n", "no desktop file\nExec=/bin/false\n", "# a comment\n",
             "[Desktop Action New]\nExec=/bin/false\n"})
        EXPECT_EQ(started(existing), Fresh) << existing.toStdString();
}

TEST(AutostartEntryTextTest, AnEntryThatIsRightStaysAsItIs)
{
    EXPECT_EQ(started(Fresh), Fresh);
}

TEST(AutostartEntryTextTest, OurKeysAreMendedInTheirPlaces)
{
    struct Row {
        const char *right;
        const char *wrong;
    };
    const Row table[]{{"\nExec=/usr/bin/larkspool\n", "\nExec=/home/me/old/larkspool --quiet\n"},
        {"\nExec=/usr/bin/larkspool\n", "\n  Exec = /home/me/old/larkspool\r\n"},
        {"TryExec=/usr/bin/larkspool\n", "TryExec=/home/me/old/larkspool\n"},
        {"Type=Application\n", "Type=Link\n"},
        {"X-GNOME-Autostart-enabled=true\n", "X-GNOME-Autostart-enabled=false\n"},
        {"NoDisplay=false\n", "NoDisplay=true\n"},
        // Twice is wrong, too.
        {"Name=Larkspool\n", "Name=One\nName=Two\n"}, {"Version=1.4\n", "Hidden=true\nVersion=1.4\n"},
        {"Version=1.4\n", "Version=1.4\nX-MATE-Autostart-enabled=false\n"}};
    for (const Row &row : table) {
        QByteArray existing = Fresh;
        ASSERT_TRUE(existing.contains(row.right));
        existing.replace(row.right, row.wrong);
        EXPECT_EQ(started(existing), Fresh) << row.wrong;
    }
}

TEST(AutostartEntryTextTest, WhatIsNotOursIsKept)
{
    EXPECT_EQ(started("# Written by hand\n"
                      "\n"
                      "[Desktop Entry]\n"
                      "#Exec=/bin/true\n"
                      "Name[de]=Lerchenspule\n"
                      "Hidden=true\n"
                      "X-GNOME-Autostart-Delay=20\n"
                      "OnlyShowIn=XFCE;\n"
                      "Exec=old\n"
                      "\n"
                      "[Desktop Action New]\n"
                      "Exec=old\n"
                      "Hidden=true\n"),
        "# Written by hand\n"
        "\n"
        "[Desktop Entry]\n"
        "#Exec=/bin/true\n"
        "Name[de]=Lerchenspule\n"
        "X-GNOME-Autostart-Delay=20\n"
        "OnlyShowIn=XFCE;\n"
        "Exec=/usr/bin/larkspool\n"
        "Type=Application\n"
        "Version=1.4\n"
        "Name=Larkspool\n"
        "Comment=Remembers what you copy\n"
        "Comment[de]=Merkt sich, was kopiert wird\n"
        "TryExec=/usr/bin/larkspool\n"
        "Icon=org.larkspool.Larkspool\n"
        "Terminal=false\n"
        "StartupNotify=false\n"
        "NoDisplay=false\n"
        "X-GNOME-Autostart-enabled=true\n"
        "\n"
        "[Desktop Action New]\n"
        "Exec=old\n"
        "Hidden=true\n");
}

TEST(AutostartEntryTextTest, AHiddenEntryIsAWholeOneOrTheExistingOneThatSaysSo)
{
    struct Row {
        QByteArray existing;
        QByteArray hidden;
    };
    const Row table[]{
        {"", "[Desktop Entry]\nType=Application\nName=Larkspool\nExec=larkspool\nHidden=true\n"},
        {"no desktop file",
            "[Desktop Entry]\nType=Application\nName=Larkspool\nExec=larkspool\nHidden=true\n"},
        {Fresh, Fresh + "Hidden=true\n"}, {Fresh + "Hidden=true\n", Fresh + "Hidden=true\n"},
        {"[Desktop Entry]\nHidden=false\nExec=mine", "[Desktop Entry]\nHidden=true\nExec=mine\n"},
        {"[Desktop Entry]\nHidden=false\nHidden=false\n", "[Desktop Entry]\nHidden=true\n"},
        {"[Desktop Entry]\n\n[Other]\nHidden=false\n",
            "[Desktop Entry]\nHidden=true\n\n[Other]\nHidden=false\n"},
        {"[Desktop Entry]", "[Desktop Entry]\nHidden=true\n"}};
    for (const Row &row : table)
        EXPECT_EQ(autostartentry::hidden(row.existing), row.hidden) << row.existing.toStdString();
}

TEST(AutostartEntryTextTest, AHiddenEntryIsShownAgain)
{
    EXPECT_EQ(started(autostartentry::hidden(Fresh)), Fresh);
}

} // namespace

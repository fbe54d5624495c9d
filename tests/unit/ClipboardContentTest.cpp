#include "platform/linux/ClipboardContent.h"
#include "platform/linux/ClipboardTargets.h"

#include <gtest/gtest.h>

using clipboard::fetchPlan;

namespace
{

/// Bytes with NULs in them.
template<size_t Size>
QByteArray bytes(const char (&literal)[Size])
{
    return QByteArray(literal, Size - 1);
}

ClipboardContent content(std::initializer_list<std::pair<const char *, QByteArray>> entries)
{
    ClipboardContent made;
    for (const auto &[target, value] : entries)
        made.insert(target, value);
    return made;
}

QByteArray utf16(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

std::optional<QByteArray> file(const char *target, const QByteArray &list)
{
    return clipboard::fileAddress(content({{target, list}}), "dahlia");
}

} // namespace

TEST(ClipboardTargets, TextsAreAskedForBestFirst)
{
    const auto plan = fetchPlan({"STRING", "text/plain", "TEXT", "UTF8_STRING", "text/plain;charset=utf-8"});
    EXPECT_EQ(
        plan.texts, QByteArrayList({"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "STRING"}));
    EXPECT_TRUE(plan.extras.isEmpty());
}

TEST(ClipboardTargets, MimeTypesCompareWithoutCaseAndSpaces)
{
    const auto plan = fetchPlan({"Text/Plain; Charset=UTF-8", "utf8_string"});
    EXPECT_EQ(plan.texts, QByteArrayList({"Text/Plain; Charset=UTF-8"}));
}

TEST(ClipboardTargets, WhatIsReadIsAskedForInTheOrderOfItsSize)
{
    const auto plan =
        fetchPlan({"image/png", "image/tiff", "text/x-moz-url", "application/x-kde-cutselection",
            "x-special/mate-copied-files", "x-special/gnome-copied-files", "text/uri-list"});
    EXPECT_EQ(plan.others,
        QByteArrayList({"text/uri-list", "x-special/gnome-copied-files", "x-special/mate-copied-files",
            "application/x-kde-cutselection", "text/x-moz-url", "image/tiff", "image/png"}));
    EXPECT_TRUE(plan.extras.isEmpty());
}

TEST(ClipboardTargets, TheSecretHintIsFound)
{
    EXPECT_EQ(
        fetchPlan({"UTF8_STRING", "x-kde-passwordManagerHint"}).secretHint, "x-kde-passwordManagerHint");
    EXPECT_EQ(fetchPlan({"UTF8_STRING"}).secretHint, std::nullopt);
}

TEST(ClipboardTargets, OtherFormatsAreKeptForOtherPrograms)
{
    const QByteArrayList kept = {
        "text/html", "text/rtf", "application/x-office;windows_formatname=\"Star Object\"", "image/svg+xml"};
    EXPECT_EQ(fetchPlan(kept).extras, kept);
}

TEST(ClipboardTargets, TargetsWithEffectsOrForOneReceiverAreNotKept)
{
    for (const char *const target : {"DELETE", "INSERT_SELECTION", "INSERT_PROPERTY", "SAVE_TARGETS",
             "MULTIPLE", "TIMESTAMP", "TARGETS", "XdndDirectSave0", "text/x-xdnd-username",
             "application/x-moz-file", "application/x-moz-file-promise", "GTK_TEXT_BUFFER_CONTENTS",
             "application/x-java-jvm-local-objectref", "application/x-qt-image",
             "application/vnd.portal.filetransfer", "COMPOUND_TEXT", "text/plain;charset=utf-16"}) {
        const auto plan = fetchPlan({target});
        EXPECT_TRUE(plan.extras.isEmpty() && plan.texts.isEmpty() && plan.others.isEmpty()) << target;
    }
}

TEST(ClipboardTargets, OneOtherImageIsKeptWhenThereIsNoneToRead)
{
    EXPECT_EQ(fetchPlan({"image/jpeg", "image/bmp", "image/webp"}).extras, QByteArrayList({"image/jpeg"}));
    EXPECT_TRUE(fetchPlan({"image/jpeg", "image/bmp", "image/png"}).extras.isEmpty());
}

TEST(ClipboardTargets, AnOfferWithoutEndIsCut)
{
    QByteArrayList offered;
    for (int i = 0; i < 1000; ++i)
        offered.append("application/x-" + QByteArray::number(i));
    EXPECT_LT(fetchPlan(offered).extras.size(), 100);
}

TEST(ClipboardTargets, AnyHintButPublicIsSecret)
{
    for (const QByteArray &hint :
        {bytes("secret"), bytes(""), bytes("Public"), bytes("publicly"), bytes("\0")})
        EXPECT_TRUE(clipboard::isSecret(hint)) << hint.constData();
    for (const QByteArray &hint : {bytes("public"), bytes("public\0"), bytes("public\n")})
        EXPECT_FALSE(clipboard::isSecret(hint)) << hint.constData();
}

TEST(ClipboardText, TheBestTextIsRead)
{
    const auto both = content({{"STRING", "latin"}, {"UTF8_STRING", "utf"}});
    EXPECT_EQ(clipboard::text(both), "utf");
    EXPECT_EQ(clipboard::text(content({{"text/html", "<b>"}})), std::nullopt);
}

TEST(ClipboardText, EncodingsAndTerminators)
{
    const struct {
        const char *target;
        QByteArray offered;
        QByteArray read;
    } rows[] = {
        {"UTF8_STRING", "grün", "grün"},
        {"UTF8_STRING", "", ""},
        {"UTF8_STRING", bytes("a\0"), "a"},
        {"UTF8_STRING", bytes("a\0b\0\0"), bytes("a\0b\0")},
        {"UTF8_STRING", "\xff", "\xef\xbf\xbd"},
        {"text/plain", "grün", "grün"},
        {"STRING", "gr\xfcn", "grün"},
        {"STRING", "gr\xc3\xbcn", "grÃ¼n"},
        {"STRING", bytes("a\0"), "a"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(clipboard::text(content({{row.target, row.offered}})), row.read) << row.offered.constData();
}

TEST(ClipboardText, AWellFormedTextIsNotCopied)
{
    const QByteArray text(1000, 'x');
    EXPECT_EQ(clipboard::text(content({{"UTF8_STRING", text}}))->constData(), text.constData());
}

TEST(ClipboardFiles, TheFirstFileOfAListIsRead)
{
    const struct {
        QByteArray list;
        std::optional<QByteArray> read;
    } rows[] = {
        {"file:///a%20b\r\nfile:///c\r\n", "file:///a%20b"},
        {"file:///a\nfile:///c", "file:///a"},
        {"# file:///no\r\n\r\n  \r\nfile:///a\r\n", "file:///a"},
        {"https://example.org\r\nfile:///a\r\n", "file:///a"},
        {"file://localhost/a", "file:///a"},
        {"file://Dahlia/a", "file:///a"},
        {"file://elsewhere/a", "file://elsewhere/a"},
        {"file:/a", "file:///a"},
        {"FILE:///a", "file:///a"},
        {bytes("file:///a\0"), "file:///a"},
        {"https://example.org", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto &row : rows)
        EXPECT_EQ(file("text/uri-list", row.list), row.read) << row.list.constData();
}

TEST(ClipboardFiles, TheFileManagersListsStartWithAVerb)
{
    EXPECT_EQ(file("x-special/gnome-copied-files", "copy\nfile:///a\nfile:///b"), "file:///a");
    EXPECT_EQ(file("x-special/mate-copied-files", "cut\nfile:///a"), "file:///a");
    EXPECT_EQ(file("x-special/gnome-copied-files", "copy"), std::nullopt);
}

TEST(ClipboardFiles, FilesAreNoOtherAddresses)
{
    const auto list = content({{"text/uri-list", "file:///a\r\nmailto:ann@example.org\r\n"}});
    EXPECT_EQ(clipboard::address(list), "mailto:ann@example.org");
    EXPECT_EQ(clipboard::address(content({{"text/uri-list", "file:///a"}})), std::nullopt);
    EXPECT_EQ(clipboard::address(content({{"text/x-moz-url", utf16(QStringLiteral("file:///a\na"))}})),
        std::nullopt);
}

TEST(ClipboardAddress, ABrowsersLinkHasATitle)
{
    const auto link = content({{"text/x-moz-url", utf16(QStringLiteral("https://ä.org/\nAn ä"))}});
    EXPECT_EQ(clipboard::address(link), "https://ä.org/");
    EXPECT_EQ(clipboard::addressTitle(link), "An ä");
}

TEST(ClipboardAddress, ALinkMayLackATitleOrMarkItsByteOrder)
{
    const auto bare = content({{"text/x-moz-url", utf16(QStringLiteral("https://a.org"))}});
    EXPECT_EQ(clipboard::address(bare), "https://a.org");
    EXPECT_EQ(clipboard::addressTitle(bare), std::nullopt);
    const auto bigEndian = content({{"text/x-moz-url", bytes("\xfe\xff\0a\0:\0b\0\n\0t\0")}});
    EXPECT_EQ(clipboard::address(bigEndian), "a:b");
    EXPECT_EQ(clipboard::addressTitle(bigEndian), "t");
    EXPECT_EQ(clipboard::address(content({{"text/x-moz-url", ""}})), std::nullopt);
}

TEST(ClipboardAddress, TheListGoesBeforeTheLink)
{
    const auto both = content({{"text/x-moz-url", utf16(QStringLiteral("https://b.org\nB"))},
        {"text/uri-list", "https://a.org\r\n"}});
    EXPECT_EQ(clipboard::address(both), "https://a.org");
    EXPECT_EQ(clipboard::addressTitle(both), "B");
}

TEST(ClipboardReading, CopiedFilesHaveTheirTextToo)
{
    const auto reading =
        clipboard::readingOf(content({{"UTF8_STRING", "/tmp/a"}, {"text/uri-list", "file:///tmp/a\r\n"}}));
    EXPECT_EQ(reading.values.at(PasteboardType::String), "/tmp/a");
    EXPECT_EQ(reading.values.at(PasteboardType::FileUrl), "file:///tmp/a");
    EXPECT_EQ(reading.values.size(), 2U);
}

TEST(ClipboardReading, ASecretHasNothingToBeRead)
{
    ClipboardContent secret = content({{"UTF8_STRING", "hunter2"}});
    secret.isSecret = true;
    EXPECT_TRUE(clipboard::readingOf(secret).values.empty());
}

#include "capture/Url.h"

#include <gtest/gtest.h>

namespace
{

TEST(UrlScheme, AnAddressWithASchemeHasOne)
{
    for (const auto *const text : {"https://example.org", "mailto:ann@example.org", "tel:+4312345",
             "file:///tmp/a", "HTTP://EXAMPLE.ORG", "x-app+v1.0:path"})
        EXPECT_TRUE(url::hasScheme(text)) << text;
}

TEST(UrlScheme, OtherTextsHaveNone)
{
    for (const auto *const text :
        {"", "/home/ann/report.pdf", "www.example.org", "1a:b", ":x", "a b:c", "http"})
        EXPECT_FALSE(url::hasScheme(text)) << text;
}

TEST(UrlHost, AWebAddressHasSchemeAndHost)
{
    for (const auto *const text :
        {"https://example.org", "http://localhost:8080/x?y=z#f", "ftp://u@example.org/", "http://[::1]/",
            "https://münchen.example/straße", "ssh://git@example.org/a.git",
            "https://example.org/a_(b)?q=%20x", "http://under_score.example.org/"})
        EXPECT_TRUE(url::hasSchemeAndHost(text)) << text;
}

TEST(UrlHost, OtherTextsDoNot)
{
    for (const auto *const text : {"tel:+4312345", "mailto:ann@example.org", "file:///tmp/a", "example.org",
             "https://", "https://example.org is mine", "https://a.example\nhttps://b.example", "note: this",
             "http://exa mple.org", "http://[::1", "C:\\Windows", "std::vector<int>"})
        EXPECT_FALSE(url::hasSchemeAndHost(text)) << text;
}

TEST(UrlHost, AVeryLongTextIsNone)
{
    EXPECT_FALSE(url::hasSchemeAndHost("https://example.org/" + QByteArray(50'000'000, 'a')));
}

TEST(FilePath, RemovesPercentEscapes)
{
    const auto path = url::filePath("file:///home/ann/a%20b%C3%BC.txt");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->text, "/home/ann/a bü.txt");
    EXPECT_EQ(path->bytes, "/home/ann/a bü.txt");
    EXPECT_TRUE(path->isDecoded);
}

TEST(FilePath, TakesTheHostOff)
{
    EXPECT_EQ(url::filePath("file://localhost/tmp/a")->text, "/tmp/a");
}

TEST(FilePath, TakesNamesWithCharactersThatShouldHaveBeenEscaped)
{
    EXPECT_EQ(url::filePath("file:///tmp/a b.txt")->text, "/tmp/a b.txt");
    EXPECT_EQ(url::filePath("file:///tmp/100%.txt")->text, "/tmp/100%.txt");
}

TEST(FilePath, ANameThatIsNoTextStaysEscaped)
{
    const auto path = url::filePath("file:///tmp/a%FFb.png");
    ASSERT_TRUE(path);
    EXPECT_FALSE(path->isDecoded);
    EXPECT_EQ(path->bytes,
        "/tmp/a\xff"
        "b.png");
    EXPECT_EQ(path->text, "/tmp/a%FFb.png");
    EXPECT_EQ(path->lastComponent, "a%FFb.png");
}

TEST(FilePath, AnAddressWithoutAPathIsNone)
{
    EXPECT_FALSE(url::filePath("file://"));
    EXPECT_FALSE(url::filePath(""));
}

TEST(Extension, IsLowerCaseAndWithoutTheDot)
{
    EXPECT_EQ(url::lowerCaseExtension("/a/b.JPG"), "jpg");
    EXPECT_EQ(url::lowerCaseExtension("/a/b.tar.gz"), "gz");
    EXPECT_EQ(url::lowerCaseExtension("/a.d/b"), "");
    EXPECT_EQ(url::lowerCaseExtension("/a/.png"), "");
    EXPECT_EQ(url::lowerCaseExtension("/a/b."), "");
}

} // namespace

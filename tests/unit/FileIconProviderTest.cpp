#include "ui/history/FileIconProvider.h"
#include "support/Waiting.h"
#include "ui/history/FileKind.h"

#include <QDir>
#include <QIcon>
#include <QQuickImageResponse>
#include <QQuickTextureFactory>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <atomic>
#include <future>

namespace
{

using namespace std::chrono_literals;

TEST(FileKind, IsToldByTheNameAlone)
{
    EXPECT_EQ(filekind::iconNames(QStringLiteral("/nowhere/report.pdf")).first(),
        QStringLiteral("application-pdf"));
    EXPECT_EQ(filekind::iconNames(QStringLiteral("/nowhere/a.png")).first(), QStringLiteral("image-png"));
    EXPECT_TRUE(
        filekind::iconNames(QStringLiteral("/nowhere/a.png")).contains(QStringLiteral("image-x-generic")));
    EXPECT_EQ(filekind::iconNames(QStringLiteral("/nowhere/none")).last(), QStringLiteral("text-x-generic"));
}

TEST(FileKind, AFolderIsToldFromAFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(filekind::isFolder(folder.path(), 10s));
    EXPECT_FALSE(filekind::isFolder(file.fileName(), 10s));
    EXPECT_FALSE(filekind::isFolder(QStringLiteral("/nowhere/at/all"), 10s));
}

TEST(FileKind, AnUnansweredQuestionIsGivenUpAndManyAreNotAskedAtAll)
{
    EXPECT_TRUE(filekind::answerTo([] { return true; }, 10s));
    EXPECT_FALSE(filekind::answerTo([] { return false; }, 10s));
    auto released = std::make_shared<std::promise<void>>();
    const std::shared_future<void> release = released->get_future().share();
    auto asked = std::make_shared<std::atomic_int>(0);
    const auto hang = [release, asked] {
        ++*asked;
        release.wait();
        return true;
    };
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(filekind::answerTo(hang, 1ms));
    EXPECT_TRUE(waitUntil([asked] { return *asked == 4; }));
    EXPECT_FALSE(filekind::answerTo([] { return true; }, 10s));
    released->set_value();
    EXPECT_TRUE(waitUntil([] { return filekind::answerTo([] { return true; }, 10s); }));
    EXPECT_EQ(*asked, 4);
}

/// A theme of two icons: a red one of PDFs, a blue one of folders.
class FileIcons : public ::testing::Test
{
protected:
    FileIcons()
    {
        const QString root = m_folder.filePath(QStringLiteral("House"));
        write(root + QStringLiteral("/index.theme"),
            "[Icon "
            "Theme]\nName=House\nDirectories=64\n\n[64]\nSize=64\nType=Scalable\nMinSize=16\nMaxSize=256\n");
        draw(root + QStringLiteral("/64/application-pdf.png"), Qt::red);
        draw(root + QStringLiteral("/64/folder.png"), Qt::blue);
        QIcon::setThemeSearchPaths({m_folder.path()});
        QIcon::setFallbackThemeName(QString());
        QIcon::setThemeName(QStringLiteral("House"));
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static void draw(const QString &path, const QColor &color)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QImage image(64, 64, QImage::Format_ARGB32);
        image.fill(color);
        ASSERT_TRUE(image.save(path));
    }
    QImage iconOf(const QString &path, const QSize &size = {40, 40})
    {
        const auto id = QString::fromLatin1(QUrl::toPercentEncoding(path));
        const std::unique_ptr<QQuickImageResponse> response(m_provider.requestImageResponse(id, size));
        bool isFinished = false;
        QObject::connect(
            response.get(), &QQuickImageResponse::finished, [&isFinished] { isFinished = true; });
        EXPECT_TRUE(waitUntil([&isFinished] { return isFinished; }));
        EXPECT_EQ(response->errorString(), QString());
        const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory());
        return factory ? factory->image() : QImage();
    }

    QTemporaryDir m_folder;
    FileIconProvider m_provider;
};

TEST_F(FileIcons, AreTheThemesInTheSizeAskedFor)
{
    const QImage icon = iconOf(QStringLiteral("/nowhere/report.pdf"));
    EXPECT_EQ(icon.size(), QSize(40, 40));
    EXPECT_EQ(icon.pixelColor(20, 20), QColor(Qt::red));
    EXPECT_EQ(iconOf(QStringLiteral("/nowhere/report.pdf"), {60, 60}).size(), QSize(60, 60));
}

TEST_F(FileIcons, OfAFolderIsAFolder)
{
    EXPECT_EQ(iconOf(m_folder.path()).pixelColor(20, 20), QColor(Qt::blue));
}

TEST_F(FileIcons, OfOddNamesAreFound)
{
    for (const char *const name :
        {"/a b.pdf", "/100%.pdf", "/a#b?c.pdf", "/%41.pdf", "/ü\n.pdf", "relative.pdf"})
        EXPECT_FALSE(iconOf(QString::fromUtf8(name)).isNull()) << name;
}

TEST_F(FileIcons, AreNoneWhereTheThemeHasNone)
{
    EXPECT_TRUE(iconOf(QStringLiteral("/nowhere/song.ogg")).isNull());
    EXPECT_TRUE(iconOf(QString()).isNull());
}

} // namespace

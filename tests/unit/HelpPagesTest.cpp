#include "platform/HelpPages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

/// An installation and a cache, both still to be made.
class HelpPagesTest : public ::testing::Test
{
protected:
    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    HelpPlaces places() const { return {path("share/help"), path("cache/help")}; }

    static void write(const QString &file, const QByteArray &text)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        QFile written(file);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(text);
    }
    static QByteArray read(const QString &file)
    {
        QFile written(file);
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }
    static QByteArray pageInside(const char *name)
    {
        return read(QStringLiteral(":/larkspool/help/") + QLatin1String(name));
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(HelpPagesTest, TheInstalledPagesAreTheOnesToShow)
{
    write(path("share/help/index.html"), "one");
    write(path("share/help/privacy.html"), "two");
    EXPECT_EQ(helpPage(HelpPage::Overview, places()), QUrl::fromLocalFile(path("share/help/index.html")));
    EXPECT_EQ(helpPage(HelpPage::Privacy, places()), QUrl::fromLocalFile(path("share/help/privacy.html")));
    EXPECT_FALSE(QFileInfo::exists(path("cache")));
}

TEST_F(HelpPagesTest, OtherwiseThePagesInsideTheProgramAreCopied)
{
    // Half an installation is none: the pages lead to each other.
    write(path("share/help/index.html"), "one");
    EXPECT_EQ(helpPage(HelpPage::Privacy, places()), QUrl::fromLocalFile(path("cache/help/privacy.html")));
    for (const char *const name : {"index.html", "privacy.html"}) {
        ASSERT_FALSE(pageInside(name).isEmpty());
        EXPECT_EQ(read(path("cache/help/") + QLatin1String(name)), pageInside(name));
    }
}

TEST_F(HelpPagesTest, ACopyOfAnotherVersionIsReplaced)
{
    write(path("cache/help/index.html"), "of yesterday");
    EXPECT_EQ(helpPage(HelpPage::Overview, places()), QUrl::fromLocalFile(path("cache/help/index.html")));
    EXPECT_EQ(read(path("cache/help/index.html")), pageInside("index.html"));
}

TEST_F(HelpPagesTest, AnAddressHoldsForAnyPath)
{
    const HelpPlaces odd{QString(), path("a b#c%20ä/help")};
    const QUrl page = helpPage(HelpPage::Overview, odd);
    EXPECT_EQ(page.toLocalFile(), odd.cache + QStringLiteral("/index.html"));
    EXPECT_EQ(read(QUrl(QString::fromUtf8(page.toEncoded())).toLocalFile()), pageInside("index.html"));
}

TEST_F(HelpPagesTest, WhereNothingCanBeWrittenThereIsNoPage)
{
    write(path("cache"), "in the way");
    EXPECT_FALSE(helpPage(HelpPage::Overview, places()).isValid());
}

TEST_F(HelpPagesTest, TheStandardPlacesAreBesideTheProgramAndInTheCache)
{
    qputenv("XDG_CACHE_HOME", path("cache").toUtf8());
    const HelpPlaces standard = HelpPlaces::standard();
    qunsetenv("XDG_CACHE_HOME");
    const QString prefix = QFileInfo(QCoreApplication::applicationDirPath()).path();
    EXPECT_EQ(standard.installed, prefix + QStringLiteral("/share/larkspool/help"));
    EXPECT_EQ(standard.cache, path("cache/larkspool/help"));
}

TEST_F(HelpPagesTest, InAFlatpakThePagesInsideTheProgramAreTheOnesToShow)
{
    write(path("flatpak-info"), "[Application]\n");
    qputenv("XDG_CACHE_HOME", path("cache").toUtf8());
    const HelpPlaces standard = HelpPlaces::standard(path("flatpak-info"));
    qunsetenv("XDG_CACHE_HOME");
    EXPECT_TRUE(standard.installed.isEmpty());
    EXPECT_EQ(standard.cache, path("cache/larkspool/help"));
}

TEST_F(HelpPagesTest, WithoutAnInstallationThePagesOfTheCurrentFolderAreNotShown)
{
    write(path("index.html"), "somebody's");
    write(path("privacy.html"), "somebody's");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path(".")));
    const QUrl page = helpPage(HelpPage::Overview, {QString(), path("cache/help")});
    QDir::setCurrent(before);
    EXPECT_EQ(page, QUrl::fromLocalFile(path("cache/help/index.html")));
}

TEST_F(HelpPagesTest, ThePagesLeadToEachOtherAndLoadNothing)
{
    for (const char *const name : {"index.html", "privacy.html"}) {
        const QString page = QString::fromUtf8(pageInside(name));
        static const QRegularExpression Reference(
            QStringLiteral("(?:href|src|srcset|action)\\s*=\\s*[\"']?([^\"'> ]*)|@import|url\\((?!#)"));
        QStringList references;
        for (auto at = Reference.globalMatch(page); at.hasNext();)
            references.append(at.next().captured(1));
        const bool isIndex = qstrcmp(name, "index.html") == 0;
        EXPECT_EQ(
            references, QStringList{isIndex ? QStringLiteral("privacy.html") : QStringLiteral("index.html")});
        EXPECT_TRUE(page.contains(QLatin1String("prefers-color-scheme: dark")));
        EXPECT_FALSE(page.contains(QLatin1String("<script")));
    }
}

} // namespace

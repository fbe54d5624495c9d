#include "ui/history/ThumbnailProvider.h"

#include "support/TemporaryStore.h"
#include "support/TestImages.h"
#include "support/Waiting.h"
#include "ui/history/PictureResponse.h"

#include <QQuickImageResponse>
#include <QQuickTextureFactory>

#include <gtest/gtest.h>

#include <algorithm>
#include <future>

namespace
{

constexpr std::chrono::seconds Deadline{20};

class Thumbnails : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> save(const QByteArray &bytes)
    {
        auto item = std::make_shared<ClipboardItem>(
            "a.png", ClipboardItemType::Image, bytes, std::nullopt, std::nullopt, false);
        m_store.context().insert(item);
        EXPECT_TRUE(m_store.context().save());
        return item;
    }
    static QString sourceOf(const ClipboardItem &item)
    {
        return QStringLiteral("%1/%2").arg(item.rowId()).arg(item.id().toString(QUuid::WithoutBraces));
    }
    /// What the provider gives. The event loop does not run meanwhile: no thread but the provider's own
    /// works.
    QImage request(const QString &source, const QSize &size = {80, 80})
    {
        std::promise<void> finished;
        std::atomic_bool isTold = false;
        const std::unique_ptr<QQuickImageResponse> response(m_provider.requestImageResponse(source, size));
        const auto tell = [&] {
            if (!isTold.exchange(true))
                finished.set_value();
        };
        QObject::connect(
            response.get(), &QQuickImageResponse::finished, response.get(), tell, Qt::DirectConnection);
        // It may have come before anybody could connect.
        if (static_cast<PictureResponse &>(*response).delivery()->isDelivered())
            tell();
        // One that is kept is there at once.
        if (const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory()); factory)
            return factory->image();
        if (finished.get_future().wait_for(Deadline) != std::future_status::ready) {
            ADD_FAILURE() << "no answer";
            return {};
        }
        const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory());
        EXPECT_EQ(response->errorString(), QString());
        return factory ? factory->image() : QImage();
    }

    TemporaryStore m_store;
    ThumbnailProvider m_provider{m_store.filePath()};
};

TEST_F(Thumbnails, AreMadeWhileTheMainThreadDoesNothing)
{
    const auto item = save(testimages::plain({640, 480}, Qt::red));
    const QImage picture = request(sourceOf(*item));
    EXPECT_EQ(picture.size(), QSize(80, 80));
    EXPECT_EQ(picture.pixelColor(40, 40), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(Thumbnails, AreAsLargeAndAsRoundAsAskedFor)
{
    const auto item = save(testimages::plain({240, 180}, Qt::red));
    const QImage picture = request(sourceOf(*item) + QStringLiteral("?0.075"), {160, 160});
    EXPECT_EQ(picture.size(), QSize(160, 160));
    EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(picture.pixelColor(12, 1), QColor(Qt::red));
}

TEST_F(Thumbnails, AreNoneOfWhatIsNotThere)
{
    const auto item = save(testimages::plain({64, 48}, Qt::red));
    const auto broken = save("no picture");
    const auto other = QUuid::createUuid().toString(QUuid::WithoutBraces);
    for (const QString &source :
        {QString(), QStringLiteral("1"), QStringLiteral("x/y?z"), QStringLiteral("999/") + other,
            QStringLiteral("%1/").arg(item->rowId()) + other, sourceOf(*broken)})
        EXPECT_TRUE(request(source).isNull()) << source.toStdString();
}

TEST_F(Thumbnails, OfARowThatIsUsedAgainAreOfItsNewEntry)
{
    const auto first = save(testimages::plain({64, 48}, Qt::red));
    const QString firstSource = sourceOf(*first);
    const qint64 row = first->rowId();
    EXPECT_FALSE(request(firstSource).isNull());
    m_store.context().remove(first);
    ASSERT_TRUE(m_store.context().save());
    const auto second = save(testimages::plain({64, 48}, Qt::blue));
    ASSERT_EQ(second->rowId(), row);
    EXPECT_EQ(request(sourceOf(*second)).pixelColor(40, 40), QColor(Qt::blue));
}

TEST_F(Thumbnails, AreKeptUpToABound)
{
    constexpr QSize Large(256, 256);
    const auto pictures = 2 * ThumbnailProvider::KeptBytes / (Large.width() * Large.height() * 4);
    const auto item = save(testimages::plain({64, 48}, Qt::red));
    for (qsizetype i = 0; i < pictures; ++i) {
        // Another roundness is another picture.
        EXPECT_EQ(request(sourceOf(*item) + QStringLiteral("?0.%1").arg(100 + i), Large).size(), Large);
        EXPECT_LE(m_provider.keptBytes(), ThumbnailProvider::KeptBytes);
    }
    EXPECT_GT(m_provider.keptBytes(), ThumbnailProvider::KeptBytes / 2);
}

TEST_F(Thumbnails, ThatAreKeptAreThereWithoutTheFile)
{
    const auto item = save(testimages::plain({64, 48}, Qt::red));
    const QString source = sourceOf(*item);
    EXPECT_FALSE(request(source).isNull());
    m_store.context().remove(item);
    ASSERT_TRUE(m_store.context().save());
    EXPECT_FALSE(request(source).isNull());
}

TEST_F(Thumbnails, ThatNobodyWaitsForAnyMoreAreAnsweredAllTheSame)
{
    const auto item = save(testimages::plain({64, 48}, Qt::red));
    std::vector<std::unique_ptr<QQuickImageResponse>> responses;
    for (int i = 0; i < 20; ++i) {
        responses.emplace_back(m_provider.requestImageResponse(
            sourceOf(*item) + QStringLiteral("?0.%1").arg(100 + i), {80, 80}));
        responses.back()->cancel();
    }
    EXPECT_TRUE(waitUntil([&responses] {
        return std::ranges::all_of(responses, [](const auto &response) {
            return static_cast<PictureResponse &>(*response).delivery()->isDelivered();
        });
    }));
}

TEST_F(Thumbnails, ThatAreStillBeingMadeWhenTheProviderGoesDoNoHarm)
{
    const auto slow = save(testimages::plain({3000, 3000}, Qt::red));
    auto provider = std::make_unique<ThumbnailProvider>(m_store.filePath());
    std::vector<std::unique_ptr<QQuickImageResponse>> responses;
    for (int i = 0; i < 6; ++i)
        responses.emplace_back(
            provider->requestImageResponse(sourceOf(*slow) + QStringLiteral("?0.%1").arg(i + 1), {80, 80}));
    responses.resize(3);
    provider.reset();
    responses.clear();
}

} // namespace

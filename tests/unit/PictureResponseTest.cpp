#include "ui/history/PictureResponse.h"

#include <QQuickTextureFactory>

#include <gtest/gtest.h>

namespace
{

QImage picture()
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

TEST(PictureResponse, GivesThePictureThatIsDelivered)
{
    PictureResponse response;
    int told = 0;
    QObject::connect(&response, &QQuickImageResponse::finished, [&told] { ++told; });
    EXPECT_TRUE(response.delivery()->isWanted());
    response.delivery()->deliver(picture());
    EXPECT_EQ(told, 1);
    const std::unique_ptr<QQuickTextureFactory> factory(response.textureFactory());
    ASSERT_TRUE(factory);
    EXPECT_EQ(factory->image(), picture());
}

TEST(PictureResponse, HasNoErrorWhenThereIsNoPicture)
{
    PictureResponse response;
    response.delivery()->deliver(QImage());
    EXPECT_EQ(response.textureFactory(), nullptr);
    EXPECT_EQ(response.errorString(), QString());
}

TEST(PictureResponse, CanBeAskedForItsPictureByWhoIsTold)
{
    PictureResponse response;
    bool hasPicture = false;
    QObject::connect(&response, &QQuickImageResponse::finished, [&response, &hasPicture] {
        hasPicture = std::unique_ptr<QQuickTextureFactory>(response.textureFactory()) != nullptr;
    });
    response.delivery()->deliver(picture());
    EXPECT_TRUE(hasPicture);
}

TEST(PictureResponse, SaysThatNobodyWaitsAnyMoreAndMayGoBeforeThePictureComes)
{
    auto response = std::make_unique<PictureResponse>();
    const auto first = response->delivery();
    response->cancel();
    EXPECT_FALSE(first->isWanted());
    response = std::make_unique<PictureResponse>();
    const auto second = response->delivery();
    response.reset();
    EXPECT_FALSE(second->isWanted());
    second->deliver(picture());
    EXPECT_TRUE(second->isDelivered());
}

} // namespace

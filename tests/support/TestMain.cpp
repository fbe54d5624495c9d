#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argumentCount, char **arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argumentCount, arguments);
    const QGuiApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}

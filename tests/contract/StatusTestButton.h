#pragma once

#include "platform/StatusBar.h"

/// A status item's button for tests: the middle of its picture is filled, the left half of that fully and the
/// right half so that half of what is behind it shows. It counts clicks.
class StatusTestButton
{
public:
    StatusItemButton button()
    {
        return {QStringLiteral("Test item"), [](int pixels, const QColor &color) {
                    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
                    image.fill(Qt::transparent);
                    const int half = pixels / 2;
                    const int quarter = pixels / 4;
                    for (int y = quarter; y < pixels - quarter; ++y) {
                        for (int x = quarter; x < pixels - quarter; ++x)
                            image.setPixelColor(x, y,
                                x < half ? color : QColor(color.red(), color.green(), color.blue(), 128));
                    }
                    return image;
                }};
    }
    std::function<void()> action()
    {
        return [this] { ++m_clickCount; };
    }
    int clickCount() const { return m_clickCount; }

private:
    int m_clickCount = 0;
};

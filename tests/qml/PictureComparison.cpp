#include "PictureComparison.h"

#include <cstdlib>

namespace pictures
{
namespace
{

bool isDifferent(QRgb expected, QRgb seen)
{
    return std::abs(qRed(expected) - qRed(seen)) > ChannelTolerance ||
        std::abs(qGreen(expected) - qGreen(seen)) > ChannelTolerance ||
        std::abs(qBlue(expected) - qBlue(seen)) > ChannelTolerance;
}

QRgb pale(QRgb color)
{
    const int gray = 192 + qGray(color) / 4;
    return qRgb(gray, gray, gray);
}

} // namespace

Comparison compare(const QImage &expected, const QImage &seen)
{
    if (expected.isNull() || expected.size() != seen.size())
        return {};
    const QImage left = expected.convertToFormat(QImage::Format_RGB32);
    const QImage right = seen.convertToFormat(QImage::Format_RGB32);
    QImage map(left.size(), QImage::Format_RGB32);
    qint64 count = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const bool isOther = isDifferent(left.pixel(x, y), right.pixel(x, y));
            count += isOther;
            map.setPixel(x, y, isOther ? qRgb(230, 0, 0) : pale(left.pixel(x, y)));
        }
    }
    return {double(count) / (double(left.width()) * left.height()), map};
}

} // namespace pictures

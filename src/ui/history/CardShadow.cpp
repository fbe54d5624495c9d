#include "ui/history/CardShadow.h"

#include <QCache>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <mutex>
#include <vector>

namespace shadow
{
namespace
{

/// What designers call a blur of so many pixels is a bell curve this much narrower.
constexpr qreal DeviationOfRadius = 0.6;
/// Where the curve has come down to what no eye sees.
constexpr qreal ReachOfDeviation = 2.5;

/// Bytes of pictures that are kept: black and a colour in two blurs, at two scales.
constexpr int KeptBytes = 1024 * 1024;

size_t indexOf(int x, int y, int side)
{
    return static_cast<size_t>(y) * static_cast<size_t>(side) + static_cast<size_t>(x);
}

std::vector<qreal> bellCurve(qreal deviation, int reach)
{
    std::vector<qreal> weights;
    qreal sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-i * i / (2 * deviation * deviation)));
        sum += weights.back();
    }
    for (qreal &weight : weights)
        weight /= sum;
    return weights;
}

/// Blurs the lines of a square mask and turns it over its diagonal; twice is once in both directions.
void blurAndTurn(std::vector<qreal> &mask, int side, const std::vector<qreal> &weights)
{
    const auto reach = static_cast<int>(weights.size() / 2);
    std::vector<qreal> turned(mask.size(), 0);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            qreal sum = 0;
            for (int i = qMax(-reach, -x); i <= qMin(reach, side - 1 - x); ++i)
                sum += mask[indexOf(x + i, y, side)] * weights.begin()[i + reach];
            turned[indexOf(y, x, side)] = sum;
        }
    }
    mask.swap(turned);
}

/// The smallest box whose corners do not touch each other's shadow, blurred: nine parts, of which the middle
/// ones are a pixel wide.
QImage blurredBox(const Look &look)
{
    const auto margin = static_cast<int>(reach(look.blurRadius));
    const int box = 2 * (look.cornerRadius + margin) + 1;
    const int side = box + 2 * margin;
    QImage sharp(side, side, QImage::Format_Alpha8);
    sharp.fill(0);
    QPainter painter(&sharp);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(QRectF(margin, margin, box, box), look.cornerRadius, look.cornerRadius);
    painter.end();
    std::vector<qreal> mask;
    for (int y = 0; y < side; ++y) {
        const uchar *const line = sharp.constScanLine(y);
        mask.insert(mask.end(), line, line + side);
    }
    const auto weights = bellCurve(qMax(0.1, look.blurRadius * DeviationOfRadius), margin);
    blurAndTurn(mask, side, weights);
    blurAndTurn(mask, side, weights);
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        auto *const line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < side; ++x) {
            QColor color = look.color;
            color.setAlphaF(float(look.color.alphaF() * mask[indexOf(x, y, side)] / 255));
            line[x] = qPremultiply(color.rgba());
        }
    }
    return picture;
}

QImage pictureFor(const Look &look)
{
    static std::mutex mutex;
    static QCache<QString, QImage> pictures(KeptBytes);
    const QString key =
        QStringLiteral("%1 %2 %3").arg(look.color.rgba()).arg(look.cornerRadius).arg(look.blurRadius);
    const std::lock_guard lock(mutex);
    if (const QImage *const known = pictures.object(key))
        return *known;
    const QImage picture = blurredBox(look);
    pictures.insert(key, new QImage(picture), picture.sizeInBytes());
    return picture;
}

} // namespace

qreal reach(qreal blurRadius)
{
    return std::ceil(blurRadius * DeviationOfRadius * ReachOfDeviation);
}

void draw(QPainter &painter, const QRect &box, const Look &look)
{
    const QImage picture = pictureFor(look);
    const auto margin = static_cast<int>(reach(look.blurRadius));
    const int corner = picture.width() / 2;
    // Of an edge only what can be seen: beyond the box, and as far in as its corners are round.
    const int band = margin + look.cornerRadius;
    const QRect whole = box.adjusted(-margin, -margin, margin, margin);
    const int last = picture.width() - corner;
    const int right = whole.right() + 1 - corner;
    const int middle = whole.width() - 2 * corner;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    for (const bool isTop : {true, false}) {
        const int y = isTop ? whole.top() : whole.bottom() + 1 - band;
        const int from = isTop ? 0 : picture.height() - band;
        painter.drawImage(whole.left(), y, picture, 0, from, corner, band);
        painter.drawImage(QRect(whole.left() + corner, y, middle, band), picture, {corner, from, 1, band});
        painter.drawImage(right, y, picture, last, from, corner, band);
    }
    // Where the blur reaches further than the corners, the sides are not even before it ends.
    const int uneven = qBound(0, (whole.height() - 2 * band) / 2, corner - band);
    const int height = whole.height() - 2 * (band + uneven);
    for (const bool isLeft : {true, false}) {
        const int x = isLeft ? whole.left() : whole.right() + 1 - band;
        const int from = isLeft ? 0 : picture.width() - band;
        painter.drawImage(
            QRect(x, whole.top() + band + uneven, band, height), picture, {from, corner, band, 1});
        if (uneven == 0)
            continue;
        painter.drawImage(x, whole.top() + band, picture, from, band, band, uneven);
        painter.drawImage(x, whole.bottom() + 1 - band - uneven, picture, from,
            picture.height() - band - uneven, band, uneven);
    }
}

} // namespace shadow

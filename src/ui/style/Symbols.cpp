#include "ui/style/Symbols.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>

namespace
{

QImage shapeOf(const QString &name, int side)
{
    // A reader that gets the name of a missing file looks for it with every suffix it knows.
    QFile file(QStringLiteral(":/qt/qml/Larkspool/Style/symbols/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file, QByteArrayLiteral("svg"));
    reader.setScaledSize({side, side});
    return reader.read();
}

} // namespace

namespace symbol
{

QImage image(const QString &name, const QSize &pixels, const QColor &color)
{
    const int side = qMin(pixels.width(), pixels.height());
    const QImage shape = side > 0 ? shapeOf(name, side) : QImage();
    if (shape.isNull())
        return {};
    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.drawImage((pixels.width() - side) / 2, (pixels.height() - side) / 2, shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

} // namespace symbol

#include "ui/style/Symbols.h"

#include <QImageReader>
#include <QPainter>

namespace symbol
{

QImage image(const QString &name, const QSize &pixels, const QColor &color)
{
    QImageReader reader(QStringLiteral(":/qt/qml/Larkspool/Style/symbols/%1.svg").arg(name));
    reader.setScaledSize(pixels);
    QImage shape = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (shape.isNull())
        return {};
    QPainter painter(&shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shape.rect(), color);
    return shape;
}

} // namespace symbol

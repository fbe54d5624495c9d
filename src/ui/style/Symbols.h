#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>

/// The named symbols, one SVG file each in `symbols/`: shapes on nothing, whose colour comes from who shows
/// them. The files keep to SVG Tiny 1.2, which is what Qt draws.
namespace symbol
{

/// The symbol in the middle of a picture of so many pixels, as large as fits, sharp, in one colour with
/// premultiplied alpha. A null picture when there is no symbol of the name, or no pixel to draw.
QImage image(const QString &name, const QSize &pixels, const QColor &color);

} // namespace symbol

#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>

/// The named symbols, one SVG file each in `symbols/`: shapes on nothing, whose colour comes from who shows
/// them.
namespace symbol
{

/// The symbol centred in a picture of so many pixels, sharp, in one colour with premultiplied alpha. A null
/// picture when there is no symbol of the name.
QImage image(const QString &name, const QSize &pixels, const QColor &color);

} // namespace symbol

#pragma once

#include "store/Color.h"

#include <QColor>

/// A stored colour as it is drawn with.
inline QColor displayColor(const Color &color)
{
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue), float(color.opacity));
}

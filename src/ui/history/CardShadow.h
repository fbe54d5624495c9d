#pragma once

#include <QColor>
#include <QRect>

class QPainter;

/// The soft shadow of a box with round corners, or its glow.
namespace shadow
{

/// What a shadow looks like; sizes in device pixels.
struct Look {
    QColor color; ///< with its opacity
    int cornerRadius;
    qreal blurRadius;
};

/// How far beyond the box the shadow of a blur radius can be seen.
qreal reach(qreal blurRadius);

/// Draws the shadow of the box around it and below its corners; the middle, which the box covers, is left
/// out. One small picture is blurred for each look, and the latest ones are kept. Any thread.
void draw(QPainter &painter, const QRect &box, const Look &look);

} // namespace shadow

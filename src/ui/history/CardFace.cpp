#include "ui/history/CardFace.h"

#include "ui/history/CardShadow.h"

#include <QPainter>
#include <QPainterPath>

namespace
{

/// A line of at least two pixels has whole ones; a thinner one is as thick as it is, and soft on its inner
/// side.
qreal lineWidth(qreal pixels)
{
    return pixels < 2 ? qMax(1.0, pixels) : qRound(pixels);
}

/// The part of a box with round corners that lies left of a line.
QPainterPath leftPart(const QRectF &box, qreal radius, qreal line)
{
    const qreal side = 2 * radius;
    QPainterPath part(QPointF(line, box.top()));
    part.arcTo(box.left(), box.top(), side, side, 90, 90);
    part.arcTo(box.left(), box.bottom() - side, side, side, 180, 90);
    part.lineTo(line, box.bottom());
    part.closeSubpath();
    return part;
}

/// The part of it that lies right of the line.
QPainterPath rightPart(const QRectF &box, qreal radius, qreal line)
{
    const qreal side = 2 * radius;
    QPainterPath part(QPointF(line, box.bottom()));
    part.arcTo(box.right() - side, box.bottom() - side, side, side, 270, 90);
    part.arcTo(box.right() - side, box.top(), side, side, 0, 90);
    part.lineTo(line, box.top());
    part.closeSubpath();
    return part;
}

} // namespace

CardFace::CardFace(QQuickItem *parent)
    : CrispItem(parent)
{
    connect(this, &CardFace::lookChanged, this, &QQuickItem::update);
}

qreal CardFace::overhang() const
{
    return qMax(shadow::reach(m_shadowRadius) + qAbs(m_shadowOffset), m_borderWidth);
}

void CardFace::draw(QPainter &painter, const QRect &place, qreal scale) const
{
    painter.setPen(Qt::NoPen);
    drawShadow(painter, place, scale);
    painter.setRenderHint(QPainter::Antialiasing);
    drawFill(painter, place, scale);
    drawBorder(painter, place, scale);
}

void CardFace::drawShadow(QPainter &painter, const QRect &place, qreal scale) const
{
    if (m_shadowColor.alpha() == 0)
        return;
    const QPoint offset(0, qRound(m_shadowOffset * scale));
    // The shadow is too soft to show by how much a card is scaled: one picture does for all of them.
    const qreal pixelRatio = painter.device()->devicePixelRatio();
    shadow::draw(painter, place.translated(offset),
        {m_shadowColor, qRound(m_radius * pixelRatio), m_shadowRadius * pixelRatio});
}

void CardFace::drawFill(QPainter &painter, const QRect &place, qreal scale) const
{
    // Side by side, not one upon the other: below a round corner's soft edge there is only one colour.
    const int bar = qRound(m_sidebarWidth * scale);
    const int split = m_isMirrored ? place.left() + place.width() - bar : place.left() + bar;
    painter.fillPath(
        leftPart(QRectF(place), m_radius * scale, split), m_isMirrored ? m_color : m_sidebarColor);
    painter.fillPath(
        rightPart(QRectF(place), m_radius * scale, split), m_isMirrored ? m_sidebarColor : m_color);
}

void CardFace::drawBorder(QPainter &painter, const QRect &place, qreal scale) const
{
    const qreal width = lineWidth(m_borderWidth * scale);
    const int outside = qRound(width / 2);
    const qreal inside = width - outside;
    const qreal radius = m_radius * scale;
    QPainterPath line;
    line.addRoundedRect(
        QRectF(place).adjusted(-outside, -outside, outside, outside), radius + outside, radius + outside);
    line.addRoundedRect(
        QRectF(place).adjusted(inside, inside, -inside, -inside), radius - inside, radius - inside);
    painter.fillPath(line, m_borderColor);
}

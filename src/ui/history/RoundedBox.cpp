#include "ui/history/RoundedBox.h"

#include <QPainter>

RoundedBox::RoundedBox(QQuickItem *parent)
    : CrispItem(parent)
{
    connect(this, &RoundedBox::lookChanged, this, &QQuickItem::update);
}

void RoundedBox::draw(QPainter &painter, const QRect &place, qreal scale) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawRoundedRect(QRectF(place), m_radius * scale, m_radius * scale);
}

#pragma once

#include "ui/history/CrispItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

/// The face of a card: a coloured bar at the left (at the right when mirrored), the card's own colour beside
/// it, a border around both and a shadow below them. The border's line runs along the edge, half of it
/// outside.
class CardFace : public CrispItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    Q_PROPERTY(QColor sidebarColor MEMBER m_sidebarColor NOTIFY lookChanged)
    Q_PROPERTY(qreal sidebarWidth MEMBER m_sidebarWidth NOTIFY lookChanged)
    Q_PROPERTY(bool isMirrored MEMBER m_isMirrored NOTIFY lookChanged)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY lookChanged)
    Q_PROPERTY(qreal borderWidth MEMBER m_borderWidth NOTIFY lookChanged)
    /// Black or a glow; its opacity included.
    Q_PROPERTY(QColor shadowColor MEMBER m_shadowColor NOTIFY lookChanged)
    /// How far it is blurred, and how far below the card it lies.
    Q_PROPERTY(qreal shadowRadius MEMBER m_shadowRadius NOTIFY lookChanged)
    Q_PROPERTY(qreal shadowOffset MEMBER m_shadowOffset NOTIFY lookChanged)

public:
    explicit CardFace(QQuickItem *parent = nullptr);

    void draw(QPainter &painter, const QRect &place, qreal scale) const override;
    qreal overhang() const override;

Q_SIGNALS:
    void lookChanged();

private:
    void drawShadow(QPainter &painter, const QRect &place, qreal scale) const;
    void drawFill(QPainter &painter, const QRect &place, qreal scale) const;
    void drawBorder(QPainter &painter, const QRect &place, qreal scale) const;

    QColor m_color = Qt::white;
    QColor m_sidebarColor = Qt::white;
    qreal m_sidebarWidth = 0;
    bool m_isMirrored = false;
    qreal m_radius = 0;
    QColor m_borderColor = Qt::black;
    qreal m_borderWidth = 0;
    QColor m_shadowColor = Qt::transparent;
    qreal m_shadowRadius = 0;
    qreal m_shadowOffset = 0;
};

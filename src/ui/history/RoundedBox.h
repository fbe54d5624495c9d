#pragma once

#include "ui/history/CrispItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

/// A box of one colour with round corners, sharp at every scale.
class RoundedBox : public CrispItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY lookChanged)

public:
    explicit RoundedBox(QQuickItem *parent = nullptr);

    void draw(QPainter &painter, const QRect &place, qreal scale) const override;

Q_SIGNALS:
    void lookChanged();

private:
    QColor m_color = Qt::black;
    qreal m_radius = 0;
};

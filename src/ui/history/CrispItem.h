#pragma once

#include <QQuickItem>

/// An item that is drawn at the screen's own pixels, by whatever it and its parents are scaled: its edges are
/// sharp, and no picture of it is kept. In a scene that is not drawn by a painter, it becomes a picture like
/// any other.
class CrispItem : public QQuickItem
{
    Q_OBJECT

public:
    explicit CrispItem(QQuickItem *parent = nullptr);

    /// Draws the item. The painter counts device pixels; `place` is where the item is, in whole ones, and
    /// `scale` is how many of them one unit of the item has.
    virtual void draw(QPainter &painter, const QRect &place, qreal scale) const = 0;
    /// How far beyond its bounds it draws, on each side, in its own units.
    virtual qreal overhang() const { return 0; }

    QRectF boundingRect() const override;

protected:
    QSGNode *updatePaintNode(QSGNode *previous, UpdatePaintNodeData *data) override;

private:
    QImage picture(qreal pixelRatio) const;
};

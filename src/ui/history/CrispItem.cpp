#include "ui/history/CrispItem.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRenderNode>
#include <QSGRendererInterface>

namespace
{

/// At the nearest pixel, and of whole ones: what is square stays so.
QRect onPixels(const QRectF &place)
{
    return {qRound(place.left()), qRound(place.top()), qRound(place.width()), qRound(place.height())};
}

bool isClipped(const QQuickItem &item)
{
    for (const QQuickItem *around = item.parentItem(); around; around = around->parentItem()) {
        if (around->clip())
            return true;
    }
    return false;
}

/// Draws the item with the painter of the scene.
class PainterNode : public QSGRenderNode
{
public:
    explicit PainterNode(const CrispItem &item)
        : m_item(item)
    {
    }

    void render(const RenderState *state) override
    {
        const QRegion *const clip = state->clipRegion();
        // An empty region is what there is without a clip, and what a clip leaves of an item beyond it.
        if (clip && clip->isEmpty() && isClipped(m_item))
            return;
        QQuickWindow *const window = m_item.window();
        auto *const painter = static_cast<QPainter *>(
            window->rendererInterface()->getResource(window, QSGRendererInterface::PainterResource));
        if (clip && !clip->isEmpty())
            painter->setClipRegion(*clip, Qt::ReplaceClip);
        const qreal pixelRatio = painter->device()->devicePixelRatio();
        const QTransform toPixels = matrix()->toTransform() * QTransform::fromScale(pixelRatio, pixelRatio);
        const QRectF bounds(0, 0, m_item.width(), m_item.height());
        painter->setTransform(QTransform::fromScale(1 / pixelRatio, 1 / pixelRatio));
        painter->setOpacity(inheritedOpacity());
        m_item.draw(*painter, onPixels(toPixels.mapRect(bounds)), toPixels.m11());
    }
    StateFlags changedStates() const override { return {}; }
    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return m_item.boundingRect(); }

private:
    // The node goes with the item, and the software renderer reads it on the item's own thread.
    const CrispItem &m_item;
};

} // namespace

CrispItem::CrispItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QRectF CrispItem::boundingRect() const
{
    // An edge that lies between two pixels is drawn at the nearer one, and may lie further out there.
    const qreal beyond = qCeil(overhang()) + 1;
    return QRectF(0, 0, width(), height()).adjusted(-beyond, -beyond, beyond, beyond);
}

QImage CrispItem::picture(qreal pixelRatio) const
{
    const QRectF bounds = boundingRect();
    QImage picture((bounds.size() * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QRectF place((QPointF() - bounds.topLeft()) * pixelRatio, size() * pixelRatio);
    draw(painter, onPixels(place), pixelRatio);
    return picture;
}

QSGNode *CrispItem::updatePaintNode(QSGNode *previous, UpdatePaintNodeData *)
{
    if (window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        QSGNode *const node = previous ? previous : new PainterNode(*this);
        node->markDirty(QSGNode::DirtyMaterial | QSGNode::DirtyGeometry);
        return node;
    }
    auto *const node = previous ? static_cast<QSGImageNode *>(previous) : window()->createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window()->createTextureFromImage(picture(window()->effectiveDevicePixelRatio())));
    node->setFiltering(QSGTexture::Linear);
    node->setRect(boundingRect());
    return node;
}

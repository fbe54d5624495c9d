#include "app/TransparentHostingView.h"

#include <QQuickWindow>

TransparentHostingView::TransparentHostingView(MainQueue &queue)
    : m_queue(queue)
{
    // The focus that the content has had comes back to it with the window's.
    setFlag(ItemIsFocusScope);
}

TransparentHostingView::~TransparentHostingView() = default;

void TransparentHostingView::setRootView(std::unique_ptr<QQuickItem> rootView)
{
    m_rootView = std::move(rootView);
    m_rootView->setParentItem(this);
    m_rootView->setSize(size());
}

void TransparentHostingView::stripBackgrounds()
{
    for (QQuickItem *const child : childItems()) {
        const QByteArrayView typeName = child->metaObject()->className();
        if (!typeName.contains("Background") && !typeName.contains("VisualEffect"))
            continue;
        child->setVisible(false);
        child->setOpacity(0);
    }
}

void TransparentHostingView::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange && data.window)
        viewDidMoveToWindow();
    // A child that comes later is seen to by the next layout.
    if (change == ItemChildAddedChange)
        polish();
}

void TransparentHostingView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (m_rootView)
        m_rootView->setSize(newGeometry.size());
    polish();
}

void TransparentHostingView::updatePolish()
{
    layout();
}

void TransparentHostingView::viewDidMoveToWindow()
{
    updateLayer();
    // Once the window has made what belongs to it.
    m_queue.async(m_lifetime.guard([this] { stripBackgrounds(); }));
}

void TransparentHostingView::updateLayer()
{
    if (window())
        window()->setColor(Qt::transparent);
}

void TransparentHostingView::layout()
{
    updateLayer();
    stripBackgrounds();
}

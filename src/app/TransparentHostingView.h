#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"

#include <QQuickItem>

/// Hosts the declarative content of a window, whose size it follows, and draws nothing of its own: what
/// toolkits put behind a content is hidden, so that only what the content draws is to be seen.
class TransparentHostingView : public QQuickItem
{
    Q_OBJECT

public:
    /// The queue must outlive it.
    explicit TransparentHostingView(MainQueue &queue);
    ~TransparentHostingView() override;

    bool isOpaque() const { return false; }

    /// Shows the item in all of its area, and owns it.
    void setRootView(std::unique_ptr<QQuickItem> rootView);
    QQuickItem *rootView() const { return m_rootView.get(); }

    /// Hides those of its direct children whose type's name contains "Background" or "VisualEffect".
    void stripBackgrounds();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void updatePolish() override;

private:
    void viewDidMoveToWindow();
    void updateLayer();
    void layout();

    MainQueue &m_queue;
    std::unique_ptr<QQuickItem> m_rootView;
    Lifetime m_lifetime;
};

#pragma once

#include "app/TransparentHostingView.h"
#include "base/Lifetime.h"
#include "base/MainQueue.h"

#include <QQuickWindow>

/// The window that floats above others and shows the history: borderless, transparent where its content is,
/// always ready to take the keyboard. It hides on Escape and when the application is no longer active.
class FloatingPanel : public QQuickWindow
{
    Q_OBJECT

public:
    static constexpr QSize Size{680, 640};

    /// The queue must outlive it.
    explicit FloatingPanel(MainQueue &queue);
    ~FloatingPanel() override;

    /// Shows the view in all of its area, and owns it.
    void setContentView(std::unique_ptr<TransparentHostingView> contentView);
    /// Null while there is none.
    TransparentHostingView *contentView() const { return m_contentView.get(); }

    /// Gives the keyboard focus within the panel to the content.
    void makeContentFirstResponder();
    /// Shows it above the others and asks for the keyboard focus.
    void makeKeyAndOrderFront();
    void orderOut();
    /// Puts its centre at the centre of the frame, in device-independent pixels.
    void centerIn(const QRect &frame);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// Escape that nothing in the content has taken.
    void cancelOperation();
    void applicationStateChanged(Qt::ApplicationState state);
    void activeChanged();
    void screensChanged();

    MainQueue &m_queue;
    std::unique_ptr<TransparentHostingView> m_contentView;
    /// Whether it has had the keyboard since it was shown. That it has lost it in its last showing may be
    /// told later than that.
    bool m_hasBeenActive = false;
    Lifetime m_lifetime;
};

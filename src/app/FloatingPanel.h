#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"

#include <QQuickView>

/// The window that floats above others and shows the history: borderless, transparent where its content is,
/// always ready to take the keyboard. It hides on Escape and when the application is no longer active.
class FloatingPanel : public QQuickView
{
    Q_OBJECT

public:
    static constexpr QSize Size{680, 640};

    /// The queue must outlive it.
    explicit FloatingPanel(MainQueue &queue);
    ~FloatingPanel() override;

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

    MainQueue &m_queue;
    Lifetime m_lifetime;
};

#include "app/FloatingPanel.h"

#include "fakes/ManualMainQueue.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <gtest/gtest.h>

namespace
{

class BackgroundItem : public QQuickItem
{
    Q_OBJECT
};
class MyVisualEffectView : public QQuickItem
{
    Q_OBJECT
};
class backgroundItem : public QQuickItem
{
    Q_OBJECT
};

class Panel : public ::testing::Test
{
protected:
    TransparentHostingView &hostContent()
    {
        auto view = std::make_unique<TransparentHostingView>(m_queue);
        view->setRootView(std::make_unique<QQuickItem>());
        m_panel.setContentView(std::move(view));
        return *m_panel.contentView();
    }
    static bool isStripped(const QQuickItem &item) { return !item.isVisible() && item.opacity() == 0; }

    ManualMainQueue m_queue;
    FloatingPanel m_panel{m_queue};
};

TEST_F(Panel, IsOfOneSizeAboveOthersWithoutAFrameAndTransparent)
{
    EXPECT_EQ(m_panel.size(), QSize(680, 640));
    EXPECT_EQ(m_panel.minimumSize(), m_panel.maximumSize());
    EXPECT_TRUE(m_panel.flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(m_panel.flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_FALSE(m_panel.flags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_EQ(m_panel.color(), QColor(Qt::transparent));
    EXPECT_EQ(m_panel.title(), QStringLiteral("Larkspool"));
    EXPECT_FALSE(m_panel.isVisible());
}

TEST_F(Panel, NewsOfALostFocusFromBeforeItWasShownDoesNotHideIt)
{
    m_panel.makeKeyAndOrderFront();
    ASSERT_FALSE(m_panel.isActive());
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    m_queue.advanceBy(std::chrono::milliseconds(1));
    EXPECT_TRUE(m_panel.isVisible());
}

TEST_F(Panel, EscapeThatNobodyTakesHidesIt)
{
    hostContent();
    m_panel.makeKeyAndOrderFront();
    ASSERT_TRUE(m_panel.isVisible());
    QKeyEvent other(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QCoreApplication::sendEvent(&m_panel, &other);
    EXPECT_TRUE(m_panel.isVisible());
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_panel, &escape);
    EXPECT_FALSE(m_panel.isVisible());
}

TEST_F(Panel, ItsCentreGoesToTheCentreOfAFrame)
{
    m_panel.centerIn(QRect(100, 50, 1000, 800));
    EXPECT_EQ(m_panel.position(), QPoint(260, 130));
}

TEST_F(Panel, ItsContentFillsIt)
{
    const TransparentHostingView &view = hostContent();
    EXPECT_EQ(view.size(), QSizeF(680, 640));
    EXPECT_EQ(view.rootView()->size(), QSizeF(680, 640));
    EXPECT_FALSE(view.isOpaque());
}

TEST_F(Panel, ItsContentHasTheFocusFromTheBeginning)
{
    EXPECT_TRUE(hostContent().hasFocus());
}

TEST_F(Panel, BackgroundsAreStrippedOnceTheViewIsInTheWindow)
{
    auto view = std::make_unique<TransparentHostingView>(m_queue);
    view->setRootView(std::make_unique<QQuickItem>());
    BackgroundItem background;
    MyVisualEffectView effect;
    backgroundItem lowerCase;
    for (QQuickItem *const child : {static_cast<QQuickItem *>(&background),
             static_cast<QQuickItem *>(&effect), static_cast<QQuickItem *>(&lowerCase)})
        child->setParentItem(view.get());
    m_panel.setContentView(std::move(view));
    EXPECT_FALSE(isStripped(background)) << "not before the window has made what belongs to it";
    m_queue.drain();
    EXPECT_TRUE(isStripped(background));
    EXPECT_TRUE(isStripped(effect));
    EXPECT_FALSE(isStripped(lowerCase));
    EXPECT_FALSE(isStripped(*m_panel.contentView()->rootView()));
}

TEST_F(Panel, ABackgroundThatComesLaterIsStrippedAtTheNextLayout)
{
    TransparentHostingView &view = hostContent();
    m_panel.makeKeyAndOrderFront();
    m_queue.drain();
    BackgroundItem late;
    late.setParentItem(&view);
    view.ensurePolished();
    EXPECT_TRUE(isStripped(late));
    m_panel.orderOut();
}

TEST_F(Panel, OnlyDirectChildrenAreStripped)
{
    TransparentHostingView &view = hostContent();
    BackgroundItem deeper;
    deeper.setParentItem(view.rootView());
    m_queue.drain();
    view.stripBackgrounds();
    EXPECT_FALSE(isStripped(deeper));
}

TEST_F(Panel, AViewThatIsGoneBeforeItsTurnStripsNothing)
{
    hostContent();
    m_panel.setContentView(std::make_unique<TransparentHostingView>(m_queue));
    m_queue.drain();
}

} // namespace

#include "FloatingPanelTest.moc"

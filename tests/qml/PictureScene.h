#pragma once

#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>

/// A window of which pictures are taken that are the same on every machine, and what a user does in it.
class PictureScene
{
public:
    virtual ~PictureScene();

    void moveMouse(const QPointF &place);
    void click(const QPointF &place, Qt::MouseButton button = Qt::LeftButton);
    /// The key goes down and up again.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = {});
    void hold(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The middle of the only visible item that shows the text, in the window.
    QPointF placeOf(const QString &text) const;
    /// What is to be seen once every picture in it is there and it changes no more.
    QImage picture();

protected:
    /// Fonts, language, cursor and icons; before the content is made. From now on each warning of the engine
    /// is a failure. Fails fatally without the fonts.
    static void settle(QQmlEngine &engine);
    void waitUntilActive();
    template<class Visit>
    void visitVisible(const Visit &visit) const
    {
        visitVisible(*window()->contentItem(), visit);
    }
    static QString textOf(const QQuickItem &item);

    virtual QQuickWindow *window() const = 0;
    /// Whether everything is where it will be.
    virtual bool isComplete() const;

private:
    template<class Visit>
    static void visitVisible(const QQuickItem &item, const Visit &visit)
    {
        for (const QQuickItem *const child : item.childItems()) {
            if (!child->isVisible())
                continue;
            visit(*child);
            visitVisible(*child, visit);
        }
    }
};

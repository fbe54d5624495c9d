#pragma once

#include "app/Translations.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>

#include <optional>
#include <vector>

/// A window of which pictures are taken that are the same on every machine, and what a user does in it.
class PictureScene
{
public:
    PictureScene();
    virtual ~PictureScene();

    // Before it is shown

    /// English, unless $PICTURE_LANGUAGE says something else, such as "de".
    void setLanguage(const QLocale &locale) { m_locale = locale; }
    /// From left to right, unless $PICTURE_DIRECTION is "rtl".
    void setLayoutDirection(Qt::LayoutDirection direction) { m_direction = direction; }

    // Shown

    void moveMouse(const QPointF &place);
    void click(const QPointF &place, Qt::MouseButton button = Qt::LeftButton);
    /// The key goes down and up again.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = {});
    void hold(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The middle of the only visible item that shows the text, in the window.
    QPointF placeOf(const QString &text) const;
    /// The place in the scene's layout that is this one in a layout from left to right.
    QPointF inLayout(const QPointF &place) const;
    /// The arrow that leads on.
    Qt::Key onwards() const { return m_direction == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right; }

    /// Of the window.
    qreal width() const { return window()->width(); }

    /// What is drawn of an item, in the window.
    struct Drawn {
        QString what; ///< the kind of the item, and the text that it shows
        QRectF place;
    };
    /// Everything in sight that draws, in the order of the items. Of what is aligned by its own direction,
    /// the place of the item.
    std::vector<Drawn> drawn() const;
    /// What is to be seen once every picture in it is there and it changes no more.
    QImage picture();

protected:
    /// Fonts, language, cursor and icons; before the content is made. From now on each warning of the engine
    /// is a failure. Fails fatally without the fonts.
    void settle(QQmlEngine &engine);
    /// What the program shows of one of its texts, in the scene's language and without the mark of an access
    /// key.
    static QString shown(const char *context, const char *text);
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
    static QRectF placeOfText(const QQuickItem &text);
    /// Whether it is not cut away as a whole by what is around it.
    static bool isInSight(const QQuickItem &item, const QRectF &place);

    QLocale m_locale;
    Qt::LayoutDirection m_direction;
    std::optional<Translations> m_translations;

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

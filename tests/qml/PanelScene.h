#pragma once

#include "support/HistoryViewFixture.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickView>

/// The whole content of the panel in a window, over a store of its own, as the program makes it; time stands
/// still and nothing moves.
class PanelScene : public HistoryViewFixture
{
public:
    ~PanelScene() override;

    // Before it is shown

    void setAppearance(Appearance::ColorScheme scheme);
    /// The categories and templates that the program begins with.
    void addDefaults();
    /// Entries of every kind.
    void addSamples();
    void addText(const QByteArray &content, const QString &application = {});
    /// As the first row, assigned to the category of that name, which is made.
    void addAssigned(const QByteArray &content, const QString &application, const QString &category);
    void addCategories(const QStringList &names);

    // Shown

    ClipboardHistoryView &view() { return *m_view; }
    void show();
    /// Lets the view's own time pass, which goes by no clock.
    void passTime();
    void moveMouse(const QPointF &place);
    void click(const QPointF &place, Qt::MouseButton button = Qt::LeftButton);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The middle of the only visible item that shows the text, in the window.
    QPointF placeOf(const QString &text) const;
    /// Where the card of the row that shows the text is drawn, in the window; empty when it is not there.
    QRectF cardOf(const QString &text) const;
    /// What is to be seen once every picture in it is there and it changes no more.
    QImage picture();

private:
    void add(const QByteArray &content, ClipboardItemType type, const QString &application, qint64 secondsAgo,
        bool isPinned = false);
    bool isComplete() const;

    std::unique_ptr<ClipboardHistoryView> m_view;
    QQuickView m_window;
    std::unique_ptr<QQuickItem> m_content;
};

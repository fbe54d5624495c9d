#pragma once

#include "PictureScene.h"
#include "fakes/FakeAppearance.h"
#include "support/HistoryViewFixture.h"
#include "ui/style/ThemeDriver.h"

#include <QQuickView>

/// The whole content of the panel in a window, over a store of its own, as the program makes it; time stands
/// still and nothing moves.
class PanelScene : public HistoryViewFixture, public PictureScene
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
    using PictureScene::press;
    void show();
    /// Lets the view's own time pass, which goes by no clock.
    void passTime();
    /// Where the card of the row that shows the text is drawn, in the window; empty when it is not there.
    QRectF cardOf(const QString &text) const;

private:
    void add(const QByteArray &content, ClipboardItemType type, const QString &application, qint64 secondsAgo,
        bool isPinned = false);
    QQuickWindow *window() const override { return m_window.get(); }
    bool isComplete() const override;

    FakeAppearance m_appearance;
    std::unique_ptr<ClipboardHistoryView> m_view;
    std::unique_ptr<QQuickView> m_window = std::make_unique<QQuickView>();
    std::unique_ptr<ThemeDriver> m_themeDriver;
    std::unique_ptr<QQuickItem> m_content;
};

#include "fakes/FakeLocalEvents.h"
#include "fakes/ManualMainQueue.h"
#include "support/TemporaryStore.h"
#include "ui/history/CombinePanel.h"
#include "ui/history/HistoryModule.h"
#include "ui/style/SymbolProvider.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

#include <algorithm>

/// The combine panel and its card together, as a screen reader finds them.
namespace
{

constexpr quint16 Left = 123;
constexpr quint16 Right = 124;

class CombinePanelView : public ::testing::Test
{
protected:
    CombinePanelView()
    {
        registerHistoryModule();
        m_window.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        QObject::connect(m_window.engine(), &QQmlEngine::warnings, [this](const QList<QQmlError> &warnings) {
            for (const QQmlError &warning : warnings)
                m_warnings.append(warning.toString());
        });
        installSymbols(*m_window.engine());
        for (const char *const name : {"Comma", "New Line", "Plus"})
            addTemplate(QString::fromLatin1(name), QString::fromLatin1(name).left(1));
        m_panel = std::make_unique<CombinePanel>(
            CombinePanel::Surroundings{m_store.context(), m_events, m_queue},
            CombinePanel::Items{item("eggs"), item("milk")},
            [this](const QString &text) {
                m_pasted.append(text);
                m_panel.reset();
            },
            [this] {
                ++m_cancelCount;
                m_panel.reset();
            });
        m_panel->appear();
        m_window.resize(680, 640);
        m_window.show();
        makeCard();
    }
    ~CombinePanelView() override { EXPECT_EQ(m_warnings, QStringList()); }

    void makeCard()
    {
        QQmlComponent component(m_window.engine());
        component.setData("import Larkspool.History\nCombinePanelView {}", QUrl());
        m_card.reset(component.createWithInitialProperties(
            {{QStringLiteral("panel"), QVariant::fromValue(m_panel.get())}}));
        auto *const card = qobject_cast<QQuickItem *>(m_card.get());
        ASSERT_TRUE(card) << component.errorString().toStdString();
        card->setParentItem(m_window.contentItem());
    }

    void addTemplate(const QString &name, const QString &separator)
    {
        const auto order = m_store.context().fetchCount<PasteTemplate>();
        m_store.context().insert(std::make_shared<PasteTemplate>(
            name, separator, QString(), QString(), QString(), QString(), order, false));
    }
    static std::shared_ptr<ClipboardItem> item(const QByteArray &content)
    {
        return std::make_shared<ClipboardItem>(
            content, ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false);
    }

    void press(quint16 keyCode)
    {
        m_events.press(keyCode);
        m_queue.drain();
    }

    QAccessibleInterface *card() const { return QAccessible::queryAccessibleInterface(m_card.get()); }

    static void collect(
        QAccessibleInterface *around, QAccessible::Role role, QList<QAccessibleInterface *> &found)
    {
        for (int i = 0; i < around->childCount(); ++i) {
            QAccessibleInterface *const child = around->child(i);
            if (child->role() == role)
                found.append(child);
            collect(child, role, found);
        }
    }
    QList<QAccessibleInterface *> all(QAccessible::Role role) const
    {
        QList<QAccessibleInterface *> found;
        collect(card(), role, found);
        return found;
    }
    static QString nameOf(QAccessibleInterface *found) { return found->text(QAccessible::Name); }

    /// The names of the templates' chips, the checked one between brackets.
    QString chips() const
    {
        QStringList names;
        for (QAccessibleInterface *const button : all(QAccessible::Button)) {
            if (button->state().checkable)
                names.append(
                    button->state().checked ? QStringLiteral("[%1]").arg(nameOf(button)) : nameOf(button));
        }
        return names.join(QLatin1Char(' '));
    }
    bool isShown(const QString &text) const
    {
        const auto texts = all(QAccessible::StaticText);
        return std::ranges::any_of(texts, [&](auto *found) { return nameOf(found) == text; });
    }
    void click(const char *name)
    {
        for (QAccessibleInterface *const button : all(QAccessible::Button)) {
            if (nameOf(button) == QString::fromUtf8(name)) {
                button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
                return;
            }
        }
        FAIL() << name << " is not there";
    }

    TemporaryStore m_store;
    ManualMainQueue m_queue;
    FakeLocalEvents m_events;
    QStringList m_pasted;
    int m_cancelCount = 0;
    QStringList m_warnings;
    std::unique_ptr<CombinePanel> m_panel;
    QQuickView m_window;
    std::unique_ptr<QObject> m_card;
};

TEST_F(CombinePanelView, IsADialogWithTheTitleTheTemplatesAndThePreview)
{
    EXPECT_EQ(card()->role(), QAccessible::Dialog);
    EXPECT_EQ(nameOf(card()), QStringLiteral("Combine 2 items"));
    EXPECT_EQ(chips(), QStringLiteral("Comma [New Line] Plus"));
    EXPECT_TRUE(isShown(QStringLiteral("eggsNmilk")));
}

TEST_F(CombinePanelView, FollowsTheArrows)
{
    press(Right);
    EXPECT_EQ(chips(), QStringLiteral("Comma New Line [Plus]"));
    EXPECT_TRUE(isShown(QStringLiteral("eggsPmilk")));
    press(Right);
    EXPECT_EQ(chips(), QStringLiteral("[Comma] New Line Plus"));
    press(Left);
    EXPECT_EQ(chips(), QStringLiteral("Comma New Line [Plus]"));
}

TEST_F(CombinePanelView, AClickOnATemplateChoosesIt)
{
    click("Comma");
    EXPECT_EQ(m_panel->selectedTemplateIndex(), 0);
    EXPECT_EQ(chips(), QStringLiteral("[Comma] New Line Plus"));
    EXPECT_TRUE(isShown(QStringLiteral("eggsCmilk")));
}

TEST_F(CombinePanelView, FollowsTheStore)
{
    addTemplate(QStringLiteral("Last"), QString());
    EXPECT_EQ(chips(), QStringLiteral("Comma [New Line] Plus Last"));
    m_store.context().remove(m_panel->templates()->record(1));
    EXPECT_EQ(chips(), QStringLiteral("[Comma] Plus Last"));
}

TEST_F(CombinePanelView, AClickOnPasteMayEndThePanelBeforeTheCard)
{
    click("Paste ↩");
    EXPECT_EQ(m_pasted, QStringList{QStringLiteral("eggsNmilk")});
    EXPECT_EQ(chips(), QString());
}

TEST_F(CombinePanelView, AClickOnCancelMayEndThePanelBeforeTheCard)
{
    click("Cancel");
    EXPECT_EQ(m_cancelCount, 1);
    EXPECT_EQ(chips(), QString());
}

TEST_F(CombinePanelView, FitsIntoTheWindowHoweverManyTemplatesThereAre)
{
    for (int i = 0; i < 100; ++i)
        addTemplate(QStringLiteral("Template %1").arg(i), QStringLiteral("\n"));
    const auto *const shown = qobject_cast<QQuickItem *>(m_card.get());
    (void)m_window.grabWindow();
    EXPECT_LT(shown->height(), 400);
    EXPECT_EQ(shown->width(), 560);
}

} // namespace

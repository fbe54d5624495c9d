#pragma once

#include "fakes/FakeLocalEvents.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeSystemSound.h"
#include "fakes/FixedClock.h"
#include "fakes/ManualMainQueue.h"
#include "support/TemporaryStore.h"
#include "ui/history/ClipboardHistoryView.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A history view over a store of its own, with time, keys and wheel in the test's hand.
class HistoryViewFixture : public ::testing::Test
{
protected:
    struct Entry {
        QByteArray content;
        ClipboardItemType type = ClipboardItemType::Text;
        std::optional<QString> application;
        std::optional<QUuid> categoryId;
        bool isPinned = false;
    };

    std::shared_ptr<ClipboardItem> add(const Entry &entry)
    {
        m_clock.advanceBy(1000);
        const auto item = std::make_shared<ClipboardItem>(entry.content, entry.type, std::nullopt,
            entry.application, std::nullopt, entry.isPinned, m_clock);
        item->setCategoryId(entry.categoryId);
        m_store.context().insert(item);
        return item;
    }
    std::shared_ptr<ClipboardItem> add(const QByteArray &content)
    {
        return add(Entry{content, ClipboardItemType::Text, std::nullopt, std::nullopt, false});
    }

    std::shared_ptr<ClipCategory> addCategory(const QString &name)
    {
        const auto order = m_store.context().fetchCount<ClipCategory>();
        const auto category = std::make_shared<ClipCategory>(
            name, QStringLiteral("#3F78F3"), QStringLiteral("doc"), order, false, m_clock);
        m_store.context().insert(category);
        return category;
    }
    void addTemplate(const QString &name, const QString &separator)
    {
        const auto order = m_store.context().fetchCount<PasteTemplate>();
        m_store.context().insert(std::make_shared<PasteTemplate>(
            name, separator, QString(), QString(), QString(), QString(), order, false));
    }

    void setPreference(const char *key, const char *value)
    {
        m_defaults.setString(QString::fromLatin1(key), QString::fromLatin1(value));
    }

    /// The view, shown for the first time.
    std::unique_ptr<ClipboardHistoryView> makeView(text::CaseRule rule = text::CaseRule::Common)
    {
        auto view = std::make_unique<ClipboardHistoryView>(surroundings(rule),
            [this](const std::shared_ptr<ClipboardItem> &item) { m_picked.append(item->contentUtf8()); });
        view->appear();
        m_queue.advanceBy(std::chrono::seconds(1));
        return view;
    }
    /// One with nobody to paste for it.
    std::unique_ptr<ClipboardHistoryView> makeViewWithoutController()
    {
        return std::make_unique<ClipboardHistoryView>(surroundings(text::CaseRule::Common), nullptr);
    }

    static QByteArrayList contents(ClipboardHistoryView &view)
    {
        QByteArrayList list;
        for (const auto &item : view.filteredItems()->rows())
            list.append(item->contentUtf8());
        return list;
    }
    static bool press(ClipboardHistoryView &view, int key, const QString &text = {},
        Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return view.handleKey(key, int(modifiers), text);
    }

    TemporaryStore m_store;
    FixedClock m_clock;
    ManualMainQueue m_queue;
    NotificationCenter m_notifications;
    FakePasteboard m_pasteboard;
    FakeLocalEvents m_events;
    FakeSystemSound m_sound;
    QByteArrayList m_picked;

private:
    ClipboardHistoryView::Surroundings surroundings(text::CaseRule rule)
    {
        return {.modelContext = m_store.context(),
            .pasteboard = m_pasteboard,
            .notifications = m_notifications,
            .defaults = m_defaults,
            .events = m_events,
            .sound = m_sound,
            .queue = m_queue,
            .clock = m_clock,
            .caseRule = rule};
    }
    QString preferencesPath() const { return m_folder.filePath(QStringLiteral("larkspool.conf")); }

    QTemporaryDir m_folder;
    UserDefaults m_defaults{preferencesPath()};
};

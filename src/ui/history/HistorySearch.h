#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "base/PieceSearch.h"
#include "store/ModelContext.h"

#include <QHash>

#include <deque>
#include <unordered_map>

/// Which entries a search finds: those whose content, or whose application's name, contains what is sought.
///
/// Contents in memory are answered at once. A content that is in its row only is read and searched in turns
/// of the main queue, a piece in each, beginning with those that were asked for first; until then the answer
/// is that of its beginning, or of the last search when this one narrows it. Main thread only.
class HistorySearch : public RecordObserver<ClipboardItem>
{
public:
    /// Both must outlive it.
    HistorySearch(ModelContext &context, MainQueue &queue, text::CaseRule rule);
    ~HistorySearch() override;
    HistorySearch(const HistorySearch &) = delete;
    HistorySearch &operator=(const HistorySearch &) = delete;

    /// Seeks another text from now on; an empty one is in every entry.
    void seek(const QString &searchText);

    bool finds(const ClipboardItem &item);

    /// The answer for an entry has become another one.
    std::function<void(const std::shared_ptr<ClipboardItem> &)> onAnswerChanged;

    /// Gives back the memory that makes the next search faster.
    void forgetFoldedTexts();

    void recordInserted(const std::shared_ptr<ClipboardItem> &) override {}
    void recordWillChange(const ClipboardItem &) override {}
    void recordChanged(const std::shared_ptr<ClipboardItem> &item) override { forget(*item); }
    void recordRemoved(const std::shared_ptr<ClipboardItem> &item) override { forget(*item); }

private:
    enum class Folding : quint8 { Unknown, Ascii, Copied };
    /// What is known of a content that is not in memory.
    struct Known {
        bool isFound = false;
        bool isCertain = false;
    };
    /// The content that is being read.
    struct Reading {
        const ClipboardItem *item;
        std::unique_ptr<ContentReader> content;
        text::PieceSearch search;
        qint64 offset = 0;
    };

    bool isIn(const ClipboardItem &item);
    Folding &foldingOf(const ClipboardItem &item);
    bool isInName(const QString &name);
    bool isInLongContent(const ClipboardItem &item);
    void scheduleTurn();
    void readNextPiece();
    void startReading(const ClipboardItem &item);
    void settle(const ClipboardItem &item, Known known);
    void forget(const ClipboardItem &item);

    ModelContext &m_context;
    MainQueue &m_queue;
    text::CaseRule m_rule;
    QString m_searchText;
    std::optional<text::SearchPattern> m_pattern;
    // Of contents that do not fold as ASCII; the others need no copy.
    std::unordered_map<const ClipboardItem *, text::FoldedText> m_foldedTexts;
    // By the entry's sequence: which of the two it is, so that it is not found out at each keystroke.
    std::vector<Folding> m_foldings;
    QHash<QString, bool> m_names;
    std::unordered_map<const ClipboardItem *, Known> m_longContents;
    std::deque<const ClipboardItem *> m_waiting;
    std::optional<Reading> m_reading;
    bool m_isTurnScheduled = false;
    Lifetime m_lifetime;
};

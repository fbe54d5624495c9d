#pragma once

#include "base/MainQueue.h"
#include "store/ClipboardItem.h"
#include "ui/history/TaskPool.h"

#include <QCache>
#include <QObject>
#include <QSet>
#include <QSize>

#include <deque>
#include <mutex>
#include <utility>

/// What the list says of an image without decoding it.
struct ImageFacts {
    qint64 byteCount = 0;
    QSize pixelSize; ///< invalid when the header does not tell it
};

/// Finds out the facts of saved images, on a thread and a connection of its own, and remembers the latest
/// ones. Main thread only.
class ImageFactsReader : public QObject
{
    Q_OBJECT

public:
    /// So many entries' facts are remembered.
    static constexpr qsizetype MostRemembered = 512;

    explicit ImageFactsReader(QString storePath);

    /// The facts of an entry, if they are known; else nothing, and it begins to find them out. Of an entry
    /// that is not saved it finds out nothing.
    std::optional<ImageFacts> facts(const ClipboardItem &item);

Q_SIGNALS:
    /// The facts of an entry that was asked for are known from now on.
    void found(const QUuid &id);

private:
    void read(qint64 rowId, const QUuid &id);
    void tellNext();

    QString m_storePath;
    QCache<QUuid, ImageFacts> m_facts{MostRemembered};
    QSet<QUuid> m_sought;
    std::mutex m_mutex;
    std::deque<std::pair<QUuid, ImageFacts>> m_read;
    EventLoopQueue m_queue;
    // It ends before what its tasks use.
    TaskPool m_pool{1};
};

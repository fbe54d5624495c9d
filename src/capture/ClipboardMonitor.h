#pragma once

#include "base/Clock.h"
#include "base/FileReader.h"
#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "capture/CaptureRule.h"

#include <QString>
#include <QUuid>

#include <memory>
#include <optional>

class ModelContainer;
class ModelContext;
class Pasteboard;
class Workspace;

/// Watches the pasteboard and turns every new copy into an entry of the history.
///
/// Life cycle: made when the store is open: what the pasteboard holds then counts as seen; `startMonitoring`;
/// ends with its destruction. Main thread only.
class ClipboardMonitor
{
public:
    /// Everything must outlive the monitor.
    ClipboardMonitor(ModelContainer &modelContainer, Pasteboard &pasteboard, const Workspace &workspace,
        FileReader &fileReader, MainQueue &queue, const Clock &clock);
    ~ClipboardMonitor();

    /// How many entries that are not pinned the history keeps.
    static constexpr qint64 UnpinnedLimit = 10'000;
    static constexpr std::chrono::milliseconds PollingInterval{500};

    /// Polls every `PollingInterval` from now on. Copies that followed each other faster are taken in one go,
    /// one poll each.
    void startMonitoring();

private:
    /// The application that was in front, as far as it is known.
    struct Source {
        std::optional<QString> appName;
        std::optional<QString> bundleId;
    };

    void tick();
    /// Takes the contents that wait, one poll each, until one needs a file that is still to be read.
    void takeWaiting();
    void readImageFile(Capture capture, Source source);
    void checkClipboard();
    void saveItem(Capture capture, Source source);
    void replaceItem(ModelContext &context, Capture capture, Source source,
        const std::shared_ptr<class ClipboardItem> &old);
    static std::optional<QUuid> defaultCategoryId(ClipboardItemType type, const ModelContext &context);
    static void pruneOldItems(ModelContext &context);

    ModelContainer &m_modelContainer;
    Pasteboard &m_pasteboard;
    const Workspace &m_workspace;
    FileReader &m_fileReader;
    MainQueue &m_queue;
    const Clock &m_clock;
    qint64 m_lastChangeCount;
    bool m_isReadingFile = false;
    std::unique_ptr<MainQueue::Timer> m_timer;
    Lifetime m_lifetime;
};

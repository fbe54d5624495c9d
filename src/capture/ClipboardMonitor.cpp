#include "capture/ClipboardMonitor.h"

#include "base/Console.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "store/ModelContainer.h"

ClipboardMonitor::ClipboardMonitor(ModelContainer &modelContainer, Pasteboard &pasteboard,
    const Workspace &workspace, FileReader &fileReader, MainQueue &queue, const Clock &clock)
    : m_modelContainer(modelContainer)
    , m_pasteboard(pasteboard)
    , m_workspace(workspace)
    , m_fileReader(fileReader)
    , m_queue(queue)
    , m_clock(clock)
    , m_lastChangeCount(pasteboard.changeCount())
{
}

ClipboardMonitor::~ClipboardMonitor() = default;

void ClipboardMonitor::startMonitoring()
{
    m_timer = m_queue.scheduledTimer(PollingInterval, [this] { tick(); });
}

void ClipboardMonitor::tick()
{
    if (m_isReadingFile)
        return;
    checkClipboard();
    takeWaiting();
}

void ClipboardMonitor::takeWaiting()
{
    while (!m_isReadingFile && m_pasteboard.advance())
        checkClipboard();
}

void ClipboardMonitor::checkClipboard()
{
    const qint64 changeCount = m_pasteboard.changeCount();
    if (changeCount == m_lastChangeCount)
        return;
    // At once: a content that gives nothing is not looked at again.
    m_lastChangeCount = changeCount;
    Source source;
    if (const auto frontmost = m_workspace.frontmostApplication()) {
        source.appName = frontmost->localizedName();
        source.bundleId = frontmost->bundleIdentifier();
    }
    auto capture = captureFrom(m_pasteboard);
    if (!capture)
        return;
    if (capture->imageFile)
        readImageFile(std::move(*capture), std::move(source));
    else
        saveItem(std::move(*capture), std::move(source));
}

/// The copies after it wait, so that the history keeps their order.
void ClipboardMonitor::readImageFile(Capture capture, Source source)
{
    m_isReadingFile = true;
    const QByteArray path = *capture.imageFile;
    m_fileReader.read(path, ModelContainer::LargestRow,
        m_lifetime.guard([this, capture = std::move(capture), source = std::move(source)](
                             std::optional<QByteArray> bytes) {
            m_isReadingFile = false;
            saveItem(withImageFile(capture, std::move(bytes)), source);
            m_queue.async(m_lifetime.guard([this] { takeWaiting(); }));
        }));
}

void ClipboardMonitor::saveItem(Capture capture, Source source)
{
    const qint64 size = capture.content.size() + (capture.imageData ? capture.imageData->size() : 0);
    if (size > ModelContainer::LargestRow) {
        consoleLine(QStringLiteral("[Larkspool] Skipped a copy of %1 bytes: larger than the store can hold")
                        .arg(size));
        return;
    }
    ModelContext &context = m_modelContainer.mainContext();
    const auto old = context.newestItem(capture.type, capture.content);
    if (old) {
        replaceItem(context, std::move(capture), std::move(source), old);
    } else {
        const auto item = std::make_shared<ClipboardItem>(std::move(capture.content), capture.type,
            std::move(capture.imageData), std::move(source.appName), std::move(source.bundleId), false,
            m_clock);
        item->setCategoryId(defaultCategoryId(capture.type, context));
        context.insert(item);
        pruneOldItems(context);
    }
    // One transaction: a crash leaves the history with the old entry or with the new one, never with neither.
    // What cannot be written now waits for the next save.
    (void)context.save();
}

void ClipboardMonitor::replaceItem(
    ModelContext &context, Capture capture, Source source, const std::shared_ptr<ClipboardItem> &old)
{
    if (!capture.imageData)
        capture.imageData = old->imageData();
    const auto item = std::make_shared<ClipboardItem>(std::move(capture.content), capture.type,
        std::move(capture.imageData), std::move(source.appName), std::move(source.bundleId), old->isPinned(),
        m_clock);
    item->setCategoryId(old->categoryId() ? old->categoryId() : defaultCategoryId(capture.type, context));
    context.remove(old);
    context.insert(item);
}

std::optional<QUuid> ClipboardMonitor::defaultCategoryId(ClipboardItemType type, const ModelContext &context)
{
    const QString name = defaultCategoryName(type);
    // No order is asked for: of two categories with the name, the first in the bar is it.
    const auto found = context.fetch<ClipCategory>(
        {.predicate = [&name](const ClipCategory &category) { return category.name() == name; },
            .leading = nullptr,
            .limit = 1});
    return found.empty() ? std::nullopt : std::optional(found.front()->id());
}

void ClipboardMonitor::pruneOldItems(ModelContext &context)
{
    for (const auto &item : context.unpinnedItemsBeyond(UnpinnedLimit))
        context.remove(item);
}

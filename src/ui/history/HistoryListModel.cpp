#include "ui/history/HistoryListModel.h"

#include "ui/history/ImageFactsReader.h"
#include "ui/history/RelativeDate.h"
#include "ui/history/RowText.h"
#include "ui/language/DisplayName.h"
#include "ui/style/DisplayColor.h"

#include <QColor>
#include <QCoreApplication>
#include <QUrl>

#include <algorithm>

namespace
{

constexpr std::chrono::milliseconds SaveWatchInterval{1000};

constexpr auto KindContext = "EntryKind";

// For the translator's list; the names themselves are the kinds' stored texts.
[[maybe_unused]] constexpr const char *TranslatedKinds[] = {
    //: The kind of an entry, on its card in capitals, where ten letters have room.
    QT_TRANSLATE_NOOP("EntryKind", "text"),
    //: The kind of an entry, on its card in capitals, where ten letters have room.
    QT_TRANSLATE_NOOP("EntryKind", "image"),
    //: The kind of an entry, on its card in capitals, where ten letters have room.
    QT_TRANSLATE_NOOP("EntryKind", "url"),
    //: The kind of an entry, on its card in capitals, where ten letters have room.
    QT_TRANSLATE_NOOP("EntryKind", "file"),
    //: The kind of an entry, on its card in capitals, where ten letters have room: text with fonts and
    //: colours.
    QT_TRANSLATE_NOOP("EntryKind", "richText"),
};

QString kindName(ClipboardItemType type)
{
    return QCoreApplication::translate(KindContext, storedText(type).toByteArray().constData());
}

QString thumbnailSource(const ClipboardItem &item)
{
    return QStringLiteral("image://thumbnail/%1/%2")
        .arg(item.rowId())
        .arg(item.id().toString(QUuid::WithoutBraces));
}

} // namespace

HistoryListModel::HistoryListModel(ModelContext &context, const Clock &clock)
    : LiveQueryModel(
          context, {.predicate = nullptr, .leading = &ClipboardItem::isPinned, .limit = std::nullopt})
    , m_clock(clock)
    , m_categories(context, {})
{
    m_categories.onWillChange = [this](const CategoryChange &change) { categoryWillChange(change); };
    m_categories.onDidChange = [this](const CategoryChange &change) { categoryDidChange(change); };
    m_saveWatch.setSingleShot(true);
    m_saveWatch.setInterval(SaveWatchInterval);
    connect(&m_saveWatch, &QTimer::timeout, this, &HistoryListModel::showSaved);
    connect(this, &QAbstractItemModel::rowsInserted, this,
        [this](const QModelIndex &, int first, int last) { awaitSaving(first, last); });
}

HistoryListModel::~HistoryListModel() = default;

void HistoryListModel::readImageFacts(const QString &storePath)
{
    m_imageFacts = std::make_unique<ImageFactsReader>(storePath);
    connect(m_imageFacts.get(), &ImageFactsReader::found, this, &HistoryListModel::showFactsOf);
}

void HistoryListModel::refreshAges()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Age});
}

QVariant HistoryListModel::data(const QModelIndex &index, int role) const
{
    const auto shown = record(index.row());
    if (!shown)
        return {};
    switch (role) {
    case Preview:
    case Qt::DisplayRole:
        return rowtext::preview(shown->contentHead(), shown->type());
    case Title:
    case Folder:
    case PixelSize:
    case Picture:
        if (shown->type() == ClipboardItemType::Image)
            return imageData(*shown, role);
        return shown->type() == ClipboardItemType::File ? fileData(*shown, role) : QString();
    case TypeName:
        return QString::fromLatin1(storedText(shown->type()));
    case TypeIcon:
        return shown->typeIcon();
    case CategoryColor:
    case Icon:
    case Label:
        return categoryData(*shown, role);
    case Age:
        return relativeDisplay(shown->createdAt(), m_clock.now());
    case SourceApp:
        return rowtext::oneLine(shown->sourceAppName().value_or(QString()));
    case IsPinned:
        return shown->isPinned();
    default:
        return {};
    }
}

QVariant HistoryListModel::categoryData(const ClipboardItem &item, int role) const
{
    const auto category = assignedCategory(item);
    if (role == CategoryColor)
        return category ? displayColor(category->color()) : QColor(Qt::transparent);
    if (role == Icon)
        return category ? category->icon() : item.typeIcon();
    const QString name = category ? displayName(*category) : kindName(item.type());
    return rowtext::oneLine(name).toUpper();
}

QVariant HistoryListModel::fileData(const ClipboardItem &item, int role) const
{
    const QString path = rowtext::filePath(item.contentHead());
    switch (role) {
    case Title:
        return rowtext::parts(path).name;
    case Folder:
        return rowtext::parts(path).folder;
    case Picture:
        return QString(
            QStringLiteral("image://fileicon/") + QString::fromLatin1(QUrl::toPercentEncoding(path)));
    default:
        return QString();
    }
}

QVariant HistoryListModel::imageData(const ClipboardItem &item, int role) const
{
    if (role == Title)
        return rowtext::imageParts(item.contentHead()).name;
    if (role == Folder && item.contentHead().contains('/'))
        return rowtext::imageParts(item.contentHead()).folder;
    if (!item.hasImageData())
        return QString();
    if (role == Picture)
        return item.rowId() != 0 ? thumbnailSource(item) : QString();
    const QByteArray &unsaved = item.fields().imageData;
    if (role == Folder && !unsaved.isNull())
        return rowtext::sizeText(unsaved.size());
    const auto facts = m_imageFacts ? m_imageFacts->facts(item) : std::nullopt;
    if (role == PixelSize)
        return facts ? rowtext::pixelSizeText(facts->pixelSize) : QString();
    return facts ? rowtext::sizeText(facts->byteCount) : QString();
}

QHash<int, QByteArray> HistoryListModel::roleNames() const
{
    return {{Preview, "preview"}, {Title, "title"}, {Folder, "folder"}, {PixelSize, "pixelSize"},
        {Picture, "picture"}, {TypeName, "typeName"}, {TypeIcon, "typeIcon"},
        {CategoryColor, "categoryColor"}, {Icon, "icon"}, {Label, "label"}, {Age, "age"},
        {SourceApp, "sourceApp"}, {IsPinned, "isPinned"}};
}

std::shared_ptr<ClipCategory> HistoryListModel::assignedCategory(const ClipboardItem &item) const
{
    if (!item.categoryId())
        return nullptr;
    const auto &categories = m_categories.rows();
    const auto found = std::ranges::find_if(
        categories, [&item](const auto &category) { return category->id() == item.categoryId(); });
    return found == categories.end() ? nullptr : *found;
}

void HistoryListModel::categoryWillChange(const CategoryChange &change)
{
    if (change.kind != CategoryChange::Kind::Removed)
        return;
    for (qsizetype row = change.row; row < change.row + change.count; ++row)
        m_leavingCategories.push_back(m_categories.rows()[static_cast<size_t>(row)]->id());
}

void HistoryListModel::categoryDidChange(const CategoryChange &change)
{
    if (change.kind == CategoryChange::Kind::Removed) {
        for (const QUuid &id : std::exchange(m_leavingCategories, {}))
            showCategoryOf(id);
        return;
    }
    for (qsizetype row = change.row; row < change.row + change.count; ++row)
        showCategoryOf(m_categories.rows()[static_cast<size_t>(row)]->id());
}

void HistoryListModel::showCategoryOf(const QUuid &categoryId)
{
    const auto isAssigned = [&categoryId](const auto &item) { return item->categoryId() == categoryId; };
    const auto first = std::ranges::find_if(rows(), isAssigned);
    if (first == rows().end())
        return;
    const auto last = std::find_if(rows().rbegin(), rows().rend(), isAssigned);
    // What lies between is not many rows' worth of drawing: a view reads only those that it shows.
    Q_EMIT dataChanged(index(static_cast<int>(first - rows().begin())),
        index(static_cast<int>(rows().rend() - last) - 1), {CategoryColor, Icon, Label});
}

void HistoryListModel::showFactsOf(const QUuid &id)
{
    const auto found = std::ranges::find_if(rows(), [&id](const auto &item) { return item->id() == id; });
    if (found == rows().end())
        return;
    const QModelIndex row = index(static_cast<int>(found - rows().begin()));
    Q_EMIT dataChanged(row, row, {Folder, PixelSize});
}

void HistoryListModel::awaitSaving(int first, int last)
{
    const auto known = m_unsavedImages.size();
    for (int row = first; row <= last; ++row) {
        const auto item = record(row);
        if (item->hasImageData() && item->rowId() == 0)
            m_unsavedImages.push_back(item);
    }
    // Whoever has inserted it saves it before anything else happens.
    if (m_unsavedImages.size() != known)
        QMetaObject::invokeMethod(this, &HistoryListModel::showSaved, Qt::QueuedConnection);
}

void HistoryListModel::showSaved()
{
    for (const auto &waiting : std::exchange(m_unsavedImages, {})) {
        const auto item = waiting.lock();
        if (!item)
            continue;
        if (item->rowId() == 0) {
            m_unsavedImages.push_back(waiting);
            continue;
        }
        const auto found = std::ranges::find(rows(), item);
        if (found == rows().end())
            continue;
        const QModelIndex row = index(static_cast<int>(found - rows().begin()));
        Q_EMIT dataChanged(row, row, {Picture, PixelSize, Folder});
    }
    // The save has failed, and is tried again at some time.
    if (!m_unsavedImages.empty() && !m_saveWatch.isActive())
        m_saveWatch.start();
}

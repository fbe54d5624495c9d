#include "ui/history/HistoryListModel.h"

#include "base/Text.h"
#include "ui/history/RelativeDate.h"

#include <array>

namespace
{

/// More than four lines of a row hold.
constexpr qint64 PreviewLength = 600;

QString preview(const ClipboardItem &item)
{
    return text::prefix(text::trimmed(item.contentHead()), PreviewLength);
}

bool isPath(const ClipboardItem &item)
{
    return (item.type() == ClipboardItemType::File || item.type() == ClipboardItemType::Image) &&
        item.contentHead().contains('/');
}

/// Paths are short: the beginning of the content is all of it. Nothing here reads a long content.
QString title(const ClipboardItem &item)
{
    if (!isPath(item))
        return {};
    const QString path = QString::fromUtf8(item.contentHead());
    return path.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty);
}

QString folder(const ClipboardItem &item)
{
    if (!isPath(item))
        return {};
    const QString path = QString::fromUtf8(item.contentHead());
    return path.left(qMax<qsizetype>(1, path.lastIndexOf(QLatin1Char('/'))));
}

} // namespace

HistoryListModel::HistoryListModel(ModelContext &context, const Clock &clock)
    : m_clock(clock)
    , m_filteredItems(
          context, {.predicate = nullptr, .order = &ClipboardItem::pinnedFirst, .limit = std::nullopt})
{
    m_filteredItems.onWillChange = [this](const Query::Change &change) { willChange(change); };
    m_filteredItems.onDidChange = [this](const Query::Change &change) { didChange(change); };
}

std::shared_ptr<ClipboardItem> HistoryListModel::item(qsizetype row) const
{
    const auto &rows = m_filteredItems.rows();
    return row >= 0 && row < std::ssize(rows) ? rows[static_cast<size_t>(row)] : nullptr;
}

void HistoryListModel::refreshAges()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Age});
}

int HistoryListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_filteredItems.rows().size());
}

QVariant HistoryListModel::data(const QModelIndex &index, int role) const
{
    const auto shown = item(index.row());
    if (!shown)
        return {};
    switch (role) {
    case Preview:
    case Qt::DisplayRole:
        return preview(*shown);
    case Title:
        return title(*shown);
    case Folder:
        return folder(*shown);
    case TypeName:
        return QString::fromLatin1(storedText(shown->type()));
    case TypeIcon:
        return shown->typeIcon();
    case Age:
        return relativeDisplay(shown->createdAt(), m_clock.now());
    case SourceApp:
        return shown->sourceAppName().value_or(QString());
    case IsPinned:
        return shown->isPinned();
    default:
        return {};
    }
}

QHash<int, QByteArray> HistoryListModel::roleNames() const
{
    return {{Preview, "preview"}, {Title, "title"}, {Folder, "folder"}, {TypeName, "typeName"},
        {TypeIcon, "typeIcon"}, {Age, "age"}, {SourceApp, "sourceApp"}, {IsPinned, "isPinned"}};
}

void HistoryListModel::willChange(const Query::Change &change)
{
    const int row = static_cast<int>(change.row);
    const int fromRow = static_cast<int>(change.fromRow);
    switch (change.kind) {
    case Query::Change::Kind::Inserted:
        beginInsertRows({}, row, row);
        break;
    case Query::Change::Kind::Removed:
        beginRemoveRows({}, row, row);
        break;
    case Query::Change::Kind::Moved:
        // Qt names the row before which it goes, counted before the move.
        beginMoveRows({}, fromRow, fromRow, {}, row > fromRow ? row + 1 : row);
        break;
    case Query::Change::Kind::Changed:
        break;
    }
}

void HistoryListModel::didChange(const Query::Change &change)
{
    switch (change.kind) {
    case Query::Change::Kind::Inserted:
        endInsertRows();
        break;
    case Query::Change::Kind::Removed:
        endRemoveRows();
        break;
    case Query::Change::Kind::Moved:
        endMoveRows();
        break;
    case Query::Change::Kind::Changed:
        break;
    }
    if (change.kind == Query::Change::Kind::Moved || change.kind == Query::Change::Kind::Changed) {
        const QModelIndex changed = index(static_cast<int>(change.row));
        Q_EMIT dataChanged(changed, changed);
    }
}

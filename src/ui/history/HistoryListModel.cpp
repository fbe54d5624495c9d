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
    : LiveQueryModel(
          context, {.predicate = nullptr, .leading = &ClipboardItem::isPinned, .limit = std::nullopt})
    , m_clock(clock)
{
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

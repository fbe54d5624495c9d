#include "ui/history/CategoryListModel.h"

#include "ui/language/DisplayName.h"
#include "ui/style/DisplayColor.h"

#include <algorithm>

CategoryListModel::CategoryListModel(ModelContext &context)
    : LiveQueryModel(context, {})
{
}

qsizetype CategoryListModel::rowOf(const QUuid &id) const
{
    const auto found =
        std::ranges::find_if(rows(), [&](const auto &category) { return category->id() == id; });
    return found == rows().end() ? -1 : found - rows().begin();
}

std::shared_ptr<ClipCategory> CategoryListModel::category(const QUuid &id) const
{
    return record(rowOf(id));
}

void CategoryListModel::setChosen(std::optional<QUuid> id)
{
    m_chosen = id;
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {IsChosen});
}

QVariant CategoryListModel::data(const QModelIndex &index, int role) const
{
    const auto category = record(index.row());
    if (!category)
        return {};
    switch (role) {
    case Name:
    case Qt::DisplayRole:
        return displayName(*category);
    case CategoryColor:
        return displayColor(category->color());
    case Icon:
        return category->icon();
    case IsChosen:
        return m_chosen == category->id();
    default:
        return {};
    }
}

QHash<int, QByteArray> CategoryListModel::roleNames() const
{
    return {{Name, "name"}, {CategoryColor, "categoryColor"}, {Icon, "icon"}, {IsChosen, "isChosen"}};
}

#include "ui/settings/CategoryRows.h"

#include "ui/language/DisplayName.h"
#include "ui/style/DisplayColor.h"

CategoryRows::CategoryRows(ModelContext &context)
    : LiveQueryModel(context, {})
{
}

QVariant CategoryRows::data(const QModelIndex &index, int role) const
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
    case IsDefault:
        return category->isDefault();
    default:
        return {};
    }
}

QHash<int, QByteArray> CategoryRows::roleNames() const
{
    return {{Name, "name"}, {CategoryColor, "categoryColor"}, {Icon, "icon"}, {IsDefault, "isDefault"}};
}

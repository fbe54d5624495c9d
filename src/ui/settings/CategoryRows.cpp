#include "ui/settings/CategoryRows.h"

#include <QColor>

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
        return category->name();
    case CategoryColor: {
        const Color color = category->color();
        return QColor::fromRgbF(
            float(color.red), float(color.green), float(color.blue), float(color.opacity));
    }
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

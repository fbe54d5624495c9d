#include "ui/history/TemplateListModel.h"

#include "ui/language/DisplayName.h"

QVariant TemplateListModel::data(const QModelIndex &index, int role) const
{
    const auto shown = record(index.row());
    if (!shown || (role != Name && role != Qt::DisplayRole))
        return {};
    return displayName(*shown);
}

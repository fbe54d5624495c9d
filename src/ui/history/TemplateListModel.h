#pragma once

#include "store/LiveQueryModel.h"

#include <QtQml/qqmlregistration.h>

/// The paste templates in their order, as views see them.
class TemplateListModel : public LiveQueryModel<PasteTemplate>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the combine panel")

public:
    /// `Name` is the one that is shown.
    enum Role { Name = Qt::UserRole };

    /// The context must outlive it.
    explicit TemplateListModel(ModelContext &context)
        : LiveQueryModel(context, {})
    {
    }

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override { return {{Name, "name"}}; }
};

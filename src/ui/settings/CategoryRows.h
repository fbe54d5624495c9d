#pragma once

#include "store/LiveQueryModel.h"

#include <QtQml/qqmlregistration.h>

/// The categories in their order, with what the settings show of each.
class CategoryRows : public LiveQueryModel<ClipCategory>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the category manager")

public:
    enum Role {
        Name = Qt::UserRole, ///< as it is shown
        CategoryColor,       ///< a QColor
        Icon,                ///< the name of a symbol
        IsDefault,
    };

    /// The context must outlive it.
    explicit CategoryRows(ModelContext &context);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

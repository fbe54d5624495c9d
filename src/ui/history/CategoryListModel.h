#pragma once

#include "store/LiveQueryModel.h"

#include <QtQml/qqmlregistration.h>

/// The categories in their order, as views see them, and which of them is chosen as filter.
class CategoryListModel : public LiveQueryModel<ClipCategory>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the history view")

public:
    enum Role {
        Name = Qt::UserRole, ///< as it is shown
        CategoryColor,       ///< a QColor
        Icon,                ///< the name of a symbol
        IsChosen,
    };

    /// The context must outlive it.
    explicit CategoryListModel(ModelContext &context);

    /// -1 when there is none with the id.
    qsizetype rowOf(const QUuid &id) const;
    /// Null when there is none with the id.
    std::shared_ptr<ClipCategory> category(const QUuid &id) const;

    /// Lists the categories that the filter lets pass; all when it is empty.
    void setFilter(FetchDescriptor<ClipCategory>::Predicate filter)
    {
        query().setPredicate(std::move(filter));
    }

    void setChosen(std::optional<QUuid> id);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    std::optional<QUuid> m_chosen;
};

#pragma once

#include "base/Clock.h"
#include "store/LiveQuery.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

/// The rows of the history list, as views see them: they follow the store change by change.
class HistoryListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the history view")

public:
    enum Role {
        Preview = Qt::UserRole, ///< the beginning of the content, white space around it removed, as one text
        Title,                  ///< of a file or an image with a path: its name
        Folder,                 ///< of a file or an image with a path: where it lies
        TypeName,               ///< the stored text of the kind
        TypeIcon,               ///< the symbol of the kind
        Age,                    ///< "now", "5m"
        SourceApp,              ///< empty when it is not known
        IsPinned,
    };

    /// Both must outlive it.
    HistoryListModel(ModelContext &context, const Clock &clock);

    /// The entry in a row; null when there is no such row.
    std::shared_ptr<ClipboardItem> item(qsizetype row) const;

    /// The ages have grown: views read them again.
    void refreshAges();

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    using Query = LiveQuery<ClipboardItem>;

    void willChange(const Query::Change &change);
    void didChange(const Query::Change &change);

    const Clock &m_clock;
    Query m_filteredItems;
};

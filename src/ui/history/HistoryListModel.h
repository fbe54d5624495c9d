#pragma once

#include "base/Clock.h"
#include "ui/history/LiveQueryModel.h"

#include <QtQml/qqmlregistration.h>

/// The rows of the history list, as views see them: they follow the store change by change.
class HistoryListModel : public LiveQueryModel<ClipboardItem>
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

    /// Lists the entries that the filter lets pass; all when it is empty.
    void setFilter(FetchDescriptor<ClipboardItem>::Predicate filter)
    {
        query().setPredicate(std::move(filter));
    }
    /// What the filter says of the entry is no longer what it said before.
    void reconsider(const std::shared_ptr<ClipboardItem> &item) { query().reconsider(item); }

    /// The ages have grown: views read them again.
    void refreshAges();

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const Clock &m_clock;
};

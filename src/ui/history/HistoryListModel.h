#pragma once

#include "base/Clock.h"
#include "store/LiveQueryModel.h"

#include <QTimer>
#include <QtQml/qqmlregistration.h>

class ImageFactsReader;

/// The rows of the history list, as views see them: they follow the store change by change, the categories'
/// too.
///
/// No role reads a long content or image bytes, and none decodes anything: what only the bytes tell is found
/// out on another thread, and the row changes when it is known.
class HistoryListModel : public LiveQueryModel<ClipboardItem>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the history view")

public:
    enum Role {
        Preview = Qt::UserRole, ///< the beginning of the content as a row shows it; of a file its path
        Title,                  ///< of a file or an image: its name
        Folder,        ///< of a file or an image with a path: where it lies; of another image "12 KB"
        PixelSize,     ///< of an image "1920×1080"; empty until it is known
        Picture,       ///< the source of a thumbnail or an icon; empty when there is none, or not yet
        TypeName,      ///< the stored text of the kind
        TypeIcon,      ///< the symbol of the kind
        CategoryColor, ///< of the assigned category, a QColor; transparent when there is none
        Icon,          ///< the symbol of the assigned category, or of the kind
        Label,         ///< the name of the assigned category, or of the kind; as it is shown, in capitals
        Age,           ///< "now", "5m"
        SourceApp,     ///< as one line; empty when it is not known
        IsPinned,
    };

    /// Both must outlive it.
    HistoryListModel(ModelContext &context, const Clock &clock);
    ~HistoryListModel() override;

    /// From now on it tells what only the bytes of images tell: `storePath` is the context's file.
    void readImageFacts(const QString &storePath);

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
    using CategoryChange = LiveQuery<ClipCategory>::Change;

    std::shared_ptr<ClipCategory> assignedCategory(const ClipboardItem &item) const;
    QVariant categoryData(const ClipboardItem &item, int role) const;
    QVariant imageData(const ClipboardItem &item, int role) const;
    QVariant fileData(const ClipboardItem &item, int role) const;

    void categoryWillChange(const CategoryChange &change);
    void categoryDidChange(const CategoryChange &change);
    void showCategoryOf(const QUuid &categoryId);
    void showFactsOf(const QUuid &id);
    void awaitSaving(int first, int last);
    void showSaved();

    const Clock &m_clock;
    LiveQuery<ClipCategory> m_categories;
    std::vector<QUuid> m_leavingCategories;
    std::unique_ptr<ImageFactsReader> m_imageFacts;
    // Images whose bytes are not in the file yet.
    std::vector<std::weak_ptr<ClipboardItem>> m_unsavedImages;
    QTimer m_saveWatch;
};

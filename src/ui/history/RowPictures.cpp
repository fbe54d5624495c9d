#include "ui/history/RowPictures.h"

#include "ui/history/FileIconProvider.h"
#include "ui/history/HistoryListModel.h"
#include "ui/history/ThumbnailProvider.h"

#include <QQmlEngine>

void installRowPictures(QQmlEngine &engine, HistoryListModel &rows, const QString &storePath)
{
    // The engine owns them.
    engine.addImageProvider(QStringLiteral("thumbnail"), new ThumbnailProvider(storePath));
    engine.addImageProvider(QStringLiteral("fileicon"), new FileIconProvider);
    rows.readImageFacts(storePath);
}

#pragma once

class HistoryListModel;
class QQmlEngine;
class QString;

/// Makes the thumbnails and the file icons known to an engine, and lets the rows tell the sizes of images.
/// `storePath` is the file of the store that the rows are of. Once, before the engine loads what shows a row.
void installRowPictures(QQmlEngine &engine, HistoryListModel &rows, const QString &storePath);

#pragma once

#include "ui/history/TaskPool.h"

#include <QCache>
#include <QQuickAsyncImageProvider>

#include <mutex>
#include <optional>

/// Gives QML the pictures of saved entries, small: `image://thumbnail/<row>/<id>?<corners>`, where `row` is
/// the number of the entry's row in the store, `id` the entry's own, and `corners` the radius of the round
/// corners as a share of a side. A picture is a square; its side is asked for in pixels. Nothing is shown of
/// an entry that is not there or has no picture that can be decoded.
///
/// The bytes are read and decoded on threads of its own, and the main thread has no part in it. The latest
/// pictures are kept, as many as fit into `KeptBytes`.
class ThumbnailProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr qsizetype KeptBytes = 4 * 1024 * 1024;

    /// When it goes, it waits for the pictures that are being decoded.
    explicit ThumbnailProvider(QString storePath);

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

    /// How many bytes of pictures it keeps. Any thread.
    qsizetype keptBytes() const;

private:
    struct Request;
    /// A null picture of one that cannot be decoded.
    std::optional<QImage> kept(const Request &request) const;
    QImage make(const Request &request);

    QString m_storePath;
    mutable std::mutex m_mutex;
    mutable QCache<QString, QImage> m_pictures{KeptBytes};
    // It ends before what its tasks use.
    TaskPool m_pool;
};

#include "ui/history/ThumbnailProvider.h"

#include "store/StoredImage.h"
#include "ui/history/PictureResponse.h"
#include "ui/history/Thumbnail.h"

namespace
{

/// One that takes long does not hold the others up, and the panel keeps a core to itself.
constexpr int Threads = 2;

/// The side when none is asked for, and the longest.
constexpr int UsualSide = 80;
constexpr int LongestSide = 512;

} // namespace

/// What a source asks for.
struct ThumbnailProvider::Request {
    qint64 rowId = 0;
    QUuid id;
    qreal corners = 0;
    int side = 0;

    Request(const QString &source, const QSize &size)
        : side(qBound(1, qMax(size.width(), size.height()), LongestSide))
    {
        const qsizetype mark = source.indexOf(QLatin1Char('?'));
        const QStringView place = QStringView(source).left(mark < 0 ? source.size() : mark);
        const qsizetype slash = place.indexOf(QLatin1Char('/'));
        if (slash < 0)
            return;
        rowId = place.first(slash).toLongLong();
        id = QUuid::fromString(place.sliced(slash + 1));
        if (mark >= 0)
            corners = qBound(0.0, QStringView(source).sliced(mark + 1).toDouble(), 0.5);
        if (size.isEmpty())
            side = UsualSide;
    }

    /// An entry's picture never changes; the row's number says nothing more.
    QString key() const
    {
        return QStringLiteral("%1 %2 %3").arg(id.toString(QUuid::WithoutBraces)).arg(corners).arg(side);
    }
};

ThumbnailProvider::ThumbnailProvider(QString storePath)
    : m_storePath(std::move(storePath))
    , m_pool(Threads)
{
}

QQuickImageResponse *ThumbnailProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *const response = new PictureResponse;
    const Request request(id, requestedSize);
    if (const auto picture = kept(request)) {
        response->delivery()->deliver(*picture);
        return response;
    }
    m_pool.start([this, request, delivery = response->delivery()] {
        delivery->deliver(delivery->isWanted() ? make(request) : QImage());
    });
    return response;
}

qsizetype ThumbnailProvider::keptBytes() const
{
    const std::lock_guard lock(m_mutex);
    return m_pictures.totalCost();
}

std::optional<QImage> ThumbnailProvider::kept(const Request &request) const
{
    const std::lock_guard lock(m_mutex);
    const QImage *const picture = m_pictures.object(request.key());
    return picture ? std::optional(*picture) : std::nullopt;
}

QImage ThumbnailProvider::make(const Request &request)
{
    const auto stored = StoredImage::open(m_storePath, request.rowId, request.id);
    if (!stored)
        return {};
    const QImage square = thumbnail::square(*stored, request.side);
    const QImage picture = thumbnail::rounded(square, request.corners * request.side);
    // One that cannot be decoded is kept, too: nobody tries it again.
    constexpr qsizetype CostOfNone = 64;
    const std::lock_guard lock(m_mutex);
    m_pictures.insert(request.key(), new QImage(picture), qMax(CostOfNone, picture.sizeInBytes()));
    return picture;
}

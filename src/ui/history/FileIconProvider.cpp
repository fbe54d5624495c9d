#include "ui/history/FileIconProvider.h"

#include "base/MainQueue.h"
#include "ui/history/FileKind.h"
#include "ui/history/PictureResponse.h"

#include <QCache>
#include <QIcon>
#include <QPixmap>
#include <QUrl>

#include <deque>
#include <mutex>

namespace
{

constexpr int Threads = 2;
constexpr std::chrono::milliseconds FolderDeadline{300};

/// The side when none is asked for, and the longest.
constexpr int UsualSide = 40;
constexpr int LongestSide = 256;

/// Icons that are kept: there are not many kinds of files in one history.
constexpr int MostIcons = 64;

} // namespace

/// The icon theme, on the main thread.
class FileIconProvider::Theme
{
public:
    /// Delivers the first of the icons that the theme has; nothing when it has none. Any thread.
    void deliver(const QStringList &names, int side, std::shared_ptr<PictureResponse::Delivery> delivery)
    {
        const std::lock_guard lock(m_mutex);
        m_requests.push_back({names, side, std::move(delivery)});
        m_queue.async([this] { deliverNext(); });
    }

private:
    struct Request {
        QStringList names;
        int side;
        std::shared_ptr<PictureResponse::Delivery> delivery;
    };

    void deliverNext()
    {
        std::unique_lock lock(m_mutex);
        const Request request = std::move(m_requests.front());
        m_requests.pop_front();
        lock.unlock();
        request.delivery->deliver(
            request.delivery->isWanted() ? icon(request.names, request.side) : QImage());
    }
    QImage icon(const QStringList &names, int side)
    {
        const QString key =
            QStringLiteral("%1 %2 %3").arg(side).arg(QIcon::themeName(), names.join(QLatin1Char(' ')));
        if (const QImage *const known = m_icons.object(key))
            return *known;
        QImage picture;
        for (auto name = names.begin(); name != names.end() && picture.isNull(); ++name)
            picture = QIcon::fromTheme(*name).pixmap(QSize(side, side), 1.0).toImage();
        m_icons.insert(key, new QImage(picture));
        return picture;
    }

    QCache<QString, QImage> m_icons{MostIcons};
    std::mutex m_mutex;
    std::deque<Request> m_requests;
    EventLoopQueue m_queue;
};

FileIconProvider::FileIconProvider()
    : m_theme(std::make_unique<Theme>())
    , m_pool(Threads)
{
}

FileIconProvider::~FileIconProvider() = default;

QQuickImageResponse *FileIconProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *const response = new PictureResponse;
    const QString path = QUrl::fromPercentEncoding(id.toUtf8());
    const int longer = qMax(requestedSize.width(), requestedSize.height());
    const int side = longer > 0 ? qMin(longer, LongestSide) : UsualSide;
    m_pool.start([this, path, side, delivery = response->delivery()] {
        const bool isFolder = delivery->isWanted() && path.startsWith(QLatin1Char('/')) &&
            filekind::isFolder(path, FolderDeadline);
        m_theme->deliver(isFolder ? filekind::folderIconNames() : filekind::iconNames(path), side, delivery);
    });
    return response;
}

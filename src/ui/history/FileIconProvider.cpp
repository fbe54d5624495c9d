#include "ui/history/FileIconProvider.h"

#include "ui/history/FileKind.h"
#include "ui/history/PictureResponse.h"

#include <QCache>
#include <QIcon>
#include <QPixmap>
#include <QUrl>

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
class FileIconProvider::Theme : public QObject
{
public:
    /// The first of the icons that the theme has; a null picture when it has none.
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

private:
    QCache<QString, QImage> m_icons{MostIcons};
};

FileIconProvider::FileIconProvider()
    : m_theme(std::make_unique<Theme>())
{
    m_pool.setMaxThreadCount(Threads);
    constexpr int IdleMilliseconds = 5000;
    m_pool.setExpiryTimeout(IdleMilliseconds);
}

FileIconProvider::~FileIconProvider()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QQuickImageResponse *FileIconProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *const response = new PictureResponse;
    const QString path = QUrl::fromPercentEncoding(id.toUtf8());
    const int longer = qMax(requestedSize.width(), requestedSize.height());
    const int side = longer > 0 ? qMin(longer, LongestSide) : UsualSide;
    m_pool.start([theme = m_theme.get(), path, side, delivery = response->delivery()] {
        if (!delivery->isWanted()) {
            delivery->deliver(QImage());
            return;
        }
        const bool isFolder = path.startsWith(QLatin1Char('/')) && filekind::isFolder(path, FolderDeadline);
        const QStringList names = isFolder ? filekind::folderIconNames() : filekind::iconNames(path);
        QMetaObject::invokeMethod(
            theme, [theme, names, side, delivery] { delivery->deliver(theme->icon(names, side)); },
            Qt::QueuedConnection);
    });
    return response;
}

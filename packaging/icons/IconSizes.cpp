#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

/// Renders the application's icon in the sizes of the hicolor theme, and a sheet of them for eyes to judge.
namespace
{

constexpr std::array Sizes{16, 22, 24, 32, 48, 64, 128, 256, 512};
/// Up to here the drawing for small sizes, which has fewer and larger shapes.
constexpr int LargestSmallSize = 32;
constexpr int Gap = 24;

const QString &iconName()
{
    static const QString Name = QStringLiteral("org.larkspool.Larkspool");
    return Name;
}

QImage rendered(const QDir &folder, int side)
{
    const QString suffix = side <= LargestSmallSize ? QStringLiteral("-small.svg") : QStringLiteral(".svg");
    QFile file(folder.filePath(iconName() + suffix));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file, QByteArrayLiteral("svg"));
    reader.setScaledSize({side, side});
    // Without premultiplied colours, as the files hold them.
    return reader.read().convertToFormat(QImage::Format_ARGB32);
}

bool saveSizes(const QDir &folder, const QDir &theme)
{
    return std::ranges::all_of(Sizes, [&](int side) {
        const QString place = QStringLiteral("%1x%1/apps").arg(side);
        return theme.mkpath(place) &&
            rendered(folder, side)
                .save(theme.filePath(place + QLatin1Char('/') + iconName() + QStringLiteral(".png")));
    });
}

int sheetWidth()
{
    int width = Gap;
    for (const int side : Sizes)
        width += side + Gap;
    return width;
}

/// All sizes in a row, side by side.
void drawRow(QPainter &painter, const QDir &folder, const QRect &row, const QColor &paper)
{
    painter.fillRect(row, paper);
    int x = Gap;
    for (const int side : Sizes) {
        painter.drawImage(x, row.bottom() + 1 - Gap - side, rendered(folder, side));
        x += side + Gap;
    }
}

bool saveSheet(const QDir &folder, const QString &picture)
{
    const int height = Sizes.back() + 2 * Gap;
    QImage sheet(sheetWidth(), 2 * height, QImage::Format_RGB32);
    QPainter painter(&sheet);
    drawRow(painter, folder, {0, 0, sheet.width(), height}, QColor(0xf6, 0xf6, 0xf7));
    drawRow(painter, folder, {0, height, sheet.width(), height}, QColor(0x1c, 0x1c, 0x1f));
    painter.end();
    return sheet.save(picture);
}

} // namespace

int main(int argumentCount, char **arguments)
{
    const QGuiApplication application(argumentCount, arguments);
    const QStringList words = QGuiApplication::arguments();
    if (words.size() != 4) {
        std::fputs(
            "usage: icon_sizes <folder of the drawings> <folder of the theme> <picture of the sheet>\n",
            stderr);
        return 2;
    }
    if (!saveSizes(QDir(words[1]), QDir(words[2])) || !saveSheet(QDir(words[1]), words[3])) {
        std::fputs("icon_sizes: a picture cannot be read or written\n", stderr);
        return 1;
    }
    return 0;
}

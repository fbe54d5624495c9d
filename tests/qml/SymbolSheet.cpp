#include "ui/history/HistoryModule.h"
#include "ui/style/Symbols.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>

#include <array>
#include <cstdio>

/// Draws every symbol on dark and on light, at one and at two pixels a point, for eyes to judge: whether they
/// are one family, equally heavy, and legible when small.
namespace
{

constexpr std::array Sizes{10, 16, 24};
constexpr int Gap = 12;
constexpr int LabelWidth = 300;
constexpr int RowHeight = 56;
constexpr int RowsOfAColumn = 16;

struct Look {
    QColor paper;
    QColor ink;
};

int columnWidth()
{
    int width = LabelWidth + 2 * Gap;
    for (const int size : Sizes)
        width += 3 * size + 2 * Gap;
    return width;
}

QImage panel(const QStringList &names, const Look &look)
{
    const auto columns = static_cast<int>((names.size() + RowsOfAColumn - 1) / RowsOfAColumn);
    QImage picture(columns * columnWidth(), RowsOfAColumn * RowHeight, QImage::Format_RGB32);
    picture.fill(look.paper);
    QPainter painter(&picture);
    painter.setPen(look.ink);
    for (int i = 0; i < names.size(); ++i) {
        int x = i / RowsOfAColumn * columnWidth() + Gap;
        const int top = i % RowsOfAColumn * RowHeight;
        painter.drawText(x, top, LabelWidth, RowHeight, Qt::AlignVCenter, names[i]);
        x += LabelWidth;
        for (const int scale : {1, 2}) {
            for (const int size : Sizes) {
                const int pixels = scale * size;
                painter.drawImage(
                    x, top + (RowHeight - pixels) / 2, symbol::image(names[i], {pixels, pixels}, look.ink));
                x += pixels + Gap;
            }
        }
    }
    return picture;
}

} // namespace

int main(int argumentCount, char **arguments)
{
    const QGuiApplication application(argumentCount, arguments);
    if (argumentCount != 2) {
        std::fputs("usage: symbol_sheet <picture>\n", stderr);
        return 2;
    }
    registerHistoryModule();
    QStringList names = QDir(QStringLiteral(":/qt/qml/Larkspool/Style/symbols")).entryList(QDir::Files);
    names.replaceInStrings(QStringLiteral(".svg"), QString());
    const QImage dark = panel(names, {QColor(0x18, 0x18, 0x1c), QColor(0xf2, 0xf2, 0xf5)});
    const QImage light = panel(names, {QColor(0xf7, 0xf7, 0xf8), QColor(0x1c, 0x1c, 0x1e)});
    QImage sheet(dark.width(), dark.height() + light.height(), QImage::Format_RGB32);
    QPainter painter(&sheet);
    painter.drawImage(0, 0, dark);
    painter.drawImage(0, dark.height(), light);
    painter.end();
    if (!sheet.convertToFormat(QImage::Format_Grayscale8).save(QString::fromLocal8Bit(arguments[1]))) {
        std::fputs("symbol_sheet: the picture cannot be written\n", stderr);
        return 1;
    }
    return 0;
}

#include "ui/style/SymbolProvider.h"

#include "ui/style/Symbols.h"

#include <QQmlEngine>

namespace
{

/// The side of the box that the symbols are drawn in.
constexpr int NaturalSide = 24;

/// Who shows a picture may leave out one side of it or both.
QSize pixelsFor(const QSize &requested)
{
    const int side = qMax(requested.width(), requested.height());
    if (side <= 0)
        return {NaturalSide, NaturalSide};
    return {
        requested.width() > 0 ? requested.width() : side, requested.height() > 0 ? requested.height() : side};
}

} // namespace

SymbolProvider::SymbolProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage SymbolProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const qsizetype mark = id.lastIndexOf(QLatin1Char('?'));
    const QColor asked = mark < 0 ? QColor() : QColor(QStringView(id).mid(mark + 1));
    const QColor color = asked.isValid() ? asked : QColor(Qt::black);
    const QSize pixels = pixelsFor(requestedSize);
    QImage picture = symbol::image(id.left(mark), pixels, color);
    if (picture.isNull())
        picture = symbol::image(QStringLiteral("app.fill"), pixels, color);
    if (size)
        *size = picture.size();
    return picture;
}

void installSymbols(QQmlEngine &engine)
{
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolProvider);
}

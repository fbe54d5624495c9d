#pragma once

#include <QQuickImageProvider>

class QQmlEngine;

/// Gives QML the named symbols in any colour: `image://symbol/<name>?<colour>`, the colour as QML writes it,
/// `#rrggbb` or `#aarrggbb`. The size asked for is in device pixels; an unknown name gives the stand-in.
class SymbolProvider : public QQuickImageProvider
{
public:
    SymbolProvider();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

/// Makes the symbols known to an engine. Once, before it loads what shows one.
void installSymbols(QQmlEngine &engine);

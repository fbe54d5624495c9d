import QtQuick
import Larkspool.Style

/// A symbol on a card: drawn as large as the card's scale makes it, and so as sharp as on one that is not scaled.
Symbol {
    id: symbol

    /// In the card's own units.
    required property int side
    /// The scale of the card when it does not move.
    required property real cardScale

    size: Math.round(side * cardScale)
    scale: 1 / cardScale
}

import QtQuick
import Larkspool.Style

/// The beginning of a text or an address. Its lines are equally high whatever is in them, and it is aligned as its
/// own direction wants.
Text {
    required property bool isUrl

    textFormat: Text.PlainText
    color: isUrl ? Theme.link : Theme.primaryText
    font.family: isUrl ? Theme.interfaceFont : Theme.monospaced
    font.pixelSize: isUrl ? Theme.urlText : Theme.previewText
    lineHeightMode: Text.FixedHeight
    lineHeight: isUrl ? Theme.urlLine : Theme.previewLine
    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
    maximumLineCount: isUrl ? 3 : 4
    elide: Text.ElideRight
}

import QtQuick
import Larkspool.Style

/// A named symbol in one colour, sharp at every scale; a stand-in when there is none of the name.
Image {
    required property string name
    property int size: 16
    property color color: Theme.primaryText

    width: size
    height: size
    source: name === "" ? "" : `image://symbol/${encodeURIComponent(name)}?${color}`
    sourceSize.width: size
    sourceSize.height: size
    // The picture has whole device pixels, the item not at every scale: each pixel is shown as one pixel, from
    // the corner on, rather than stretched a little.
    fillMode: Image.Pad
    // The left one in every layout: a layout that is mirrored mirrors the alignment.
    horizontalAlignment: Theme.isMirrored ? Image.AlignRight : Image.AlignLeft
    verticalAlignment: Image.AlignTop
}

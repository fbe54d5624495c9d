import QtQuick
import Larkspool.Style

/// An image: a small picture of it, its name, where it lies or how large it is, and its size in pixels.
PathPreview {
    id: preview

    /// The source of the picture; empty when there is none.
    required property string picture

    Image {
        readonly property bool hasNothing: status === Image.Ready && implicitWidth === 0

        visible: preview.picture !== "" && !hasNothing
        width: visible ? Theme.thumbnail : 0
        height: visible ? Theme.thumbnail : 0
        asynchronous: true
        // The corners are round by a share of the side.
        source: preview.picture && `${preview.picture}?${Theme.thumbnailRadius / Theme.thumbnail}`
        sourceSize.width: Theme.thumbnail
        sourceSize.height: Theme.thumbnail
    }
}

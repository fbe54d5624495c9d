import QtQuick
import Larkspool.History
import Larkspool.Style

/// A file: its icon, its name, its folder.
PathPreview {
    id: preview

    /// The source of the icon.
    required property string picture
    required property color accent
    required property real cardScale

    Item {
        width: Theme.fileIcon
        height: Theme.fileIcon

        Image {
            id: icon

            anchors.fill: parent
            asynchronous: true
            source: preview.picture
            sourceSize.width: Theme.fileIcon
            sourceSize.height: Theme.fileIcon
            fillMode: Image.PreserveAspectFit
        }

        CardSymbol {
            anchors.centerIn: parent
            // The theme has no icon for it.
            visible: icon.status === Image.Ready && icon.implicitWidth === 0
            name: visible ? "doc" : ""
            side: Theme.fileIcon
            cardScale: preview.cardScale
            color: preview.accent
        }
    }
}

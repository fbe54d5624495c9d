import QtQuick
import Larkspool.Style

/// A picture and beside it a name, where it lies, and a detail; nothing takes the place of a picture that is not
/// there. Names are aligned as their own direction wants.
Item {
    id: preview

    required property string title
    required property string folder
    property string detail: ""
    default property alias shown: frame.data

    implicitHeight: Math.max(frame.height, texts.height)

    Item {
        id: frame

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }

    Column {
        id: texts

        anchors.left: frame.right
        anchors.leftMargin: frame.width > 0 ? Theme.pictureSpacing : 0
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.pathSpacing

        Text {
            width: parent.width
            text: preview.title
            textFormat: Text.PlainText
            color: Theme.primaryText
            font.pixelSize: Theme.nameText
            font.weight: Font.DemiBold
            maximumLineCount: 1
            elide: Text.ElideMiddle
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: preview.folder
            textFormat: Text.PlainText
            color: Theme.secondaryText
            font.pixelSize: Theme.folderText
            maximumLineCount: 1
            elide: Text.ElideMiddle
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: preview.detail
            horizontalAlignment: Text.AlignLeft
            textFormat: Text.PlainText
            color: Theme.tertiaryText
            font.pixelSize: Theme.detailText
            font.weight: Font.Medium
        }
    }
}

import QtQuick
import Larkspool.History
import Larkspool.Style

/// What can be done to an entry at once, and whether it is pinned.
Item {
    id: actions

    required property bool isPinned
    property string notice: ""
    required property real cardScale

    signal pin
    signal remove

    implicitHeight: Theme.rowButtonSize

    CardSymbol {
        id: marker

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        visible: actions.isPinned
        name: actions.isPinned ? "pin.fill" : ""
        side: Theme.pinMarkerSymbol
        cardScale: actions.cardScale
        color: Theme.pinMarker
    }

    Text {
        anchors.left: marker.visible ? marker.right : parent.left
        anchors.leftMargin: marker.visible ? Theme.rowButtonSpacing : 0
        anchors.right: buttons.left
        anchors.rightMargin: Theme.pictureSpacing
        anchors.verticalCenter: parent.verticalCenter
        visible: text !== ""
        text: actions.notice
        textFormat: Text.PlainText
        color: Theme.destructive
        font.pixelSize: 11
        horizontalAlignment: Text.AlignLeft
        maximumLineCount: 1
        elide: Text.ElideRight

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Row {
        id: buttons

        anchors.right: parent.right
        spacing: Theme.rowButtonSpacing

        RowButton {
            symbol: actions.isPinned ? "pin.slash.fill" : "pin"
            symbolColor: Theme.secondaryText
            //: Of an entry: pinned ones are kept, and stand first.
            toolTip: actions.isPinned ? qsTr("Unpin") : qsTr("Pin")
            cardScale: actions.cardScale
            onClicked: actions.pin()
        }

        RowButton {
            symbol: "trash"
            symbolColor: Theme.deleteSymbol
            toolTip: qsTr("Delete")
            cardScale: actions.cardScale
            onClicked: actions.remove()
        }
    }
}

import QtQuick
import Larkspool.History
import Larkspool.Style

/// What can be done to an entry at once, and whether it is pinned.
Item {
    id: actions

    required property bool isPinned
    required property real cardScale

    signal pin
    signal remove

    implicitHeight: Theme.rowButtonSize

    CardSymbol {
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        visible: actions.isPinned
        name: actions.isPinned ? "pin.fill" : ""
        side: Theme.pinMarkerSymbol
        cardScale: actions.cardScale
        color: Theme.pinMarker
    }

    Row {
        anchors.right: parent.right
        spacing: Theme.rowButtonSpacing

        RowButton {
            symbol: actions.isPinned ? "pin.slash.fill" : "pin"
            symbolColor: Theme.secondaryText
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

pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.Style

/// How many entries are listed, and the menu.
Item {
    id: bar

    required property int count

    signal menuRequested(Item button)

    height: 20

    Text {
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        //: How many entries are listed.
        text: qsTr("%n items", "", bar.count)
        color: Theme.primaryText
        font.pixelSize: 14
        font.weight: Font.DemiBold

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Rectangle {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: -4
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        radius: 13
        color: pointer.containsMouse ? Theme.hoveredButton : "transparent"

        Accessible.role: Accessible.ButtonMenu
        //: A button that opens the menu, to a screen reader.
        Accessible.name: qsTr("Menu")
        Accessible.onPressAction: bar.menuRequested(button)

        Symbol {
            anchors.centerIn: parent
            name: "ellipsis.circle"
            size: 18
            color: Theme.secondaryText
        }

        MouseArea {
            id: pointer

            anchors.fill: parent
            hoverEnabled: true
            onClicked: bar.menuRequested(button)
        }
    }
}

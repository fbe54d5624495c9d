import QtQuick
import Larkspool.Style

/// One entry of the history as a card.
Item {
    id: row

    required property int index
    required property string preview
    required property string title
    required property string folder
    required property string typeName
    required property string typeIcon
    required property string age
    required property string sourceApp
    required property bool isPinned
    property bool isSelected: false

    signal clicked

    readonly property color accent: Theme.typeColor(typeName)
    readonly property bool isPath: folder !== ""

    height: Theme.cardHeight

    Accessible.role: Accessible.ListItem
    Accessible.name: row.preview
    Accessible.selected: row.isSelected
    Accessible.selectable: true
    Accessible.onPressAction: row.clicked()

    Rectangle {
        id: card

        anchors.fill: parent
        color: row.isSelected ? Theme.selectedCard : Theme.card
        radius: Theme.cardRadius

        Rectangle {
            id: sidebar

            width: Theme.sidebarWidth
            height: parent.height
            radius: Theme.cardRadius
            color: Theme.sidebar(row.accent)

            Rectangle {
                // Square on the side of the text.
                anchors.right: parent.right
                width: Theme.cardRadius
                height: parent.height
                color: parent.color
            }

            Rectangle {
                id: badge

                anchors.top: parent.top
                anchors.topMargin: 10
                anchors.horizontalCenter: parent.horizontalCenter
                width: 32
                height: 32
                radius: 16
                color: Qt.alpha(row.accent, 0.85)

                Symbol {
                    anchors.centerIn: parent
                    name: row.typeIcon
                    size: 18
                    color: "white"
                }
            }

            Text {
                anchors.top: badge.bottom
                anchors.topMargin: 5
                anchors.horizontalCenter: parent.horizontalCenter
                text: row.typeName.toUpperCase()
                color: row.accent
                font.pixelSize: 9
                font.bold: true
            }

            Column {
                anchors.bottom: parent.bottom
                anchors.bottomMargin: 10
                width: parent.width
                spacing: 4

                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: row.age
                    color: Theme.secondaryText
                    font.pixelSize: 10
                    font.weight: Font.Medium
                }

                Text {
                    width: parent.width - 8
                    x: 4
                    visible: text !== ""
                    text: row.sourceApp
                    textFormat: Text.PlainText
                    color: Theme.tertiaryText
                    font.pixelSize: 8
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignHCenter
                    maximumLineCount: 1
                }
            }
        }

        Column {
            anchors.left: sidebar.right
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.leftMargin: 14
            anchors.rightMargin: 14
            anchors.topMargin: 12
            spacing: 3

            Text {
                width: parent.width
                text: row.isPath ? row.title : row.preview
                textFormat: Text.PlainText
                color: row.typeName === "url" ? Theme.link : Theme.primaryText
                font.family: row.typeName === "text" ? Theme.monospaced : Theme.interfaceFont
                font.pixelSize: row.typeName === "url" ? 13 : 14
                font.weight: row.isPath ? Font.DemiBold : Font.Normal
                lineHeight: 1.15
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                maximumLineCount: row.isPath ? 1 : 4
                elide: row.isPath ? Text.ElideMiddle : Text.ElideRight
            }

            Text {
                width: parent.width
                visible: row.isPath
                text: row.folder
                textFormat: Text.PlainText
                color: Theme.secondaryText
                font.pixelSize: 11
                elide: Text.ElideMiddle
            }
        }

        Symbol {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: 10
            visible: row.isPinned
            name: row.isPinned ? "pin.fill" : ""
            size: 12
            color: Theme.selection
        }

        Rectangle {
            anchors.fill: parent
            color: "transparent"
            radius: Theme.cardRadius
            border.width: row.isSelected ? 3 : 1.5
            border.color: row.isSelected ? Theme.selection : Theme.cardBorder
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: row.clicked()
    }
}

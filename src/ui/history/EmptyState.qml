pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// What stands in place of the list when there is nothing in it.
Item {
    id: root

    /// Nothing has been copied yet: a welcome.
    required property bool isFirstStart
    required property bool isSearching

    Column {
        anchors.centerIn: parent
        visible: !root.isFirstStart
        spacing: 6

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.isSearching ? "magnifyingglass" : "line.3.horizontal.decrease.circle.fill"
            size: 32
            color: Theme.tertiaryText
        }

        Item {
            width: 1
            height: 4
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("No items found")
            color: Theme.primaryText
            font.pixelSize: 15
            font.weight: Font.DemiBold

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.isSearching ? qsTr("Try a different search term") : qsTr("Copy something to get started")
            color: Theme.secondaryText
            font.pixelSize: 12

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    CardFace {
        anchors.centerIn: parent
        visible: root.isFirstStart
        width: 420
        height: Math.ceil(welcome.height) + 64
        color: Theme.card
        sidebarColor: Theme.card
        sidebarWidth: Theme.cardRadius
        radius: Theme.cardRadius
        borderColor: Theme.cardBorder
        borderWidth: Theme.cardBorderWidth
        shadowColor: Qt.alpha("black", Theme.shadowOpacity)
        shadowRadius: Theme.shadowRadius
        shadowOffset: Theme.shadowOffset

        Column {
            id: welcome

            anchors.centerIn: parent
            width: parent.width - 64
            spacing: 20

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "clipboard.fill"
                size: 40
                color: Theme.selection
            }

            Column {
                width: parent.width
                spacing: 6

                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Welcome to Larkspool!")
                    color: Theme.primaryText
                    font.pixelSize: 18
                    font.weight: Font.DemiBold

                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }

                Text {
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTr("Everything you copy appears here automatically.")
                    color: Theme.secondaryText
                    font.pixelSize: 13
                    wrapMode: Text.WordWrap

                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }

            Column {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 12

                Repeater {
                    model: [
                        {symbol: "doc.on.clipboard", tip: qsTr("Copy any text, URL, image, or file")},
                        {symbol: "arrow.up.arrow.down", tip: qsTr("Use ↑↓ arrows or scroll to navigate")},
                        {symbol: "return", tip: qsTr("Press Enter to paste into your app")},
                        {symbol: "magnifyingglass", tip: qsTr("Just start typing to search")}
                    ]

                    delegate: Row {
                        id: row

                        required property var modelData

                        anchors.left: parent?.left
                        spacing: 12

                        Symbol {
                            id: sign

                            anchors.verticalCenter: parent.verticalCenter
                            name: row.modelData.symbol
                            size: 16
                            color: Theme.selection
                        }

                        Text {
                            anchors.verticalCenter: parent.verticalCenter
                            width: Math.min(implicitWidth, welcome.width - sign.width - row.spacing)
                            text: row.modelData.tip
                            wrapMode: Text.WordWrap
                            color: Theme.primaryText
                            font.pixelSize: 13

                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                        }
                    }
                }
            }
        }
    }
}

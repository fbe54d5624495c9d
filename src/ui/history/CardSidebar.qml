import QtQuick
import Larkspool.History
import Larkspool.Style

/// The bar at a card's left: what kind of entry it is, how old, and where it comes from.
Item {
    id: sidebar

    required property string icon
    required property string label
    required property string age
    required property string sourceApp
    required property color accent
    required property real cardScale

    width: Theme.sidebarWidth

    RoundedBox {
        id: badge

        y: Theme.sidebarPadding
        anchors.horizontalCenter: parent.horizontalCenter
        width: Theme.badge
        height: Theme.badge
        radius: Theme.badge / 2
        color: Qt.alpha(sidebar.accent, Theme.badgeOpacity)

        CardSymbol {
            anchors.centerIn: parent
            name: sidebar.icon
            side: Theme.badgeSymbol
            cardScale: sidebar.cardScale
            color: "white"
        }
    }

    Text {
        anchors.top: badge.bottom
        anchors.topMargin: Theme.sidebarSpacing
        x: Theme.sidebarSide
        width: parent.width - 2 * Theme.sidebarSide
        text: sidebar.label
        textFormat: Text.PlainText
        color: sidebar.accent
        font.pixelSize: Theme.labelText
        font.bold: true
        font.letterSpacing: 0.3
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        maximumLineCount: 1
    }

    Column {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.sidebarPadding
        x: Theme.sidebarSide
        width: parent.width - 2 * Theme.sidebarSide
        spacing: Theme.sidebarSpacing

        Text {
            width: parent.width
            text: sidebar.age
            textFormat: Text.PlainText
            color: Theme.secondaryText
            font.pixelSize: Theme.ageText
            font.weight: Font.Medium
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 1
            elide: Text.ElideRight
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: sidebar.sourceApp
            textFormat: Text.PlainText
            color: Theme.tertiaryText
            font.pixelSize: Theme.sourceText
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 1
            elide: Text.ElideRight
        }
    }
}

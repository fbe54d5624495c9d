import QtQuick
import Larkspool.Style

/// How many entries are selected, and what the keys do with them.
Rectangle {
    id: bar

    required property int count

    height: 30
    radius: Theme.fieldRadius
    color: Qt.alpha(Theme.selection, Theme.isDark ? 0.18 : 0.12)

    Accessible.role: Accessible.StaticText
    Accessible.name: label.text

    Symbol {
        id: sign

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "checkmark.circle.fill"
        size: 16
        color: Theme.selection
    }

    Text {
        id: label

        anchors.left: sign.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("%n items selected", "", bar.count)
        color: Theme.primaryText
        font.pixelSize: 12
        font.weight: Font.DemiBold
    }

    Text {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        //: Keys and what they do, in one line beside the count; there is not much room. "toggle" adds an entry to
        //: the selection or takes it out, "clear" ends the selection.
        text: qsTr("⇧↑↓ select  |  ⌘Click toggle  |  ↩ combine  |  Esc clear")
        color: Theme.secondaryText
        font.pixelSize: 9
        font.weight: Font.Medium

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}

import QtQuick
import Larkspool.History
import Larkspool.Style

/// A category as a pill: filled with its colour when it is chosen, with a dim one else.
Rectangle {
    id: chip

    required property string name
    required property color categoryColor
    required property string icon
    required property bool isChosen
    /// Whether a screen reader is to follow the keys to it.
    property bool isFocused: false

    readonly property color ink: isChosen ? "white" : categoryColor

    signal clicked

    onIsFocusedChanged: ScreenReader.follow(chip)

    width: Math.min(sign.width + label.implicitWidth + 25, Theme.longestChip)
    height: Theme.chipHeight
    radius: Theme.chipRadius
    color: isChosen ? categoryColor : Theme.dimmedCategoryColor(categoryColor)

    Accessible.role: Accessible.Button
    Accessible.name: chip.name
    Accessible.checkable: true
    Accessible.checked: chip.isChosen
    Accessible.focused: chip.isFocused
    Accessible.onPressAction: chip.clicked()

    Symbol {
        id: sign

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: chip.icon
        size: 12
        color: chip.ink
    }

    Text {
        id: label

        anchors.left: sign.right
        anchors.leftMargin: 5
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: chip.name
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        maximumLineCount: 1
        elide: Text.ElideRight
        color: chip.ink
        font.pixelSize: 12
        font.weight: Font.DemiBold
    }

    MouseArea {
        anchors.fill: parent
        onClicked: chip.clicked()
    }
}

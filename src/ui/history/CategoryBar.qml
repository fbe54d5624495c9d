pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// One chip for each category, and how to go from one to the next.
Item {
    id: bar

    required property ClipboardHistoryView view

    height: 24

    ListView {
        id: chips

        anchors.left: parent.left
        anchors.right: hint.left
        anchors.rightMargin: 12
        height: parent.height
        orientation: ListView.Horizontal
        spacing: 8
        clip: true
        interactive: contentWidth > width
        boundsBehavior: Flickable.StopAtBounds
        model: bar.view.categories

        delegate: Rectangle {
            id: chip

            required property int index
            required property string name
            required property color categoryColor
            required property string icon
            required property bool isChosen

            readonly property color ink: isChosen ? "white" : categoryColor

            width: label.implicitWidth + 10 + 13 + 5 + 10
            height: 24
            radius: Theme.chipRadius
            color: isChosen ? categoryColor : Theme.dimmedCategoryColor(categoryColor)

            Accessible.role: Accessible.Button
            Accessible.name: chip.name
            Accessible.checkable: true
            Accessible.checked: chip.isChosen
            Accessible.onPressAction: bar.view.clickChip(chip.index)

            onIsChosenChanged: {
                if (isChosen)
                    chips.positionViewAtIndex(index, ListView.Contain)
            }

            Symbol {
                anchors.left: parent.left
                anchors.leftMargin: 10
                anchors.verticalCenter: parent.verticalCenter
                name: chip.icon
                size: 13
                color: chip.ink
            }

            Text {
                id: label

                anchors.right: parent.right
                anchors.rightMargin: 10
                anchors.verticalCenter: parent.verticalCenter
                text: chip.name
                textFormat: Text.PlainText
                color: chip.ink
                font.pixelSize: 12
                font.weight: Font.DemiBold
            }

            MouseArea {
                anchors.fill: parent
                onClicked: bar.view.clickChip(chip.index)
            }
        }
    }

    Text {
        id: hint

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: "← → navigate  |  Esc clear"
        color: Theme.secondaryText
        font.pixelSize: 9
        font.weight: Font.Medium
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// One chip for each category, and how to go from one to the next.
Item {
    id: bar

    required property ClipboardHistoryView view

    height: Theme.chipHeight

    ChipList {
        id: chips

        anchors.left: parent.left
        anchors.right: hint.left
        anchors.rightMargin: 12
        model: bar.view.categories

        delegate: CategoryChip {
            id: chip

            required property int index

            onClicked: bar.view.clickChip(chip.index)
            onIsChosenChanged: {
                if (isChosen)
                    chips.positionViewAtIndex(index, ListView.Contain)
            }
        }
    }

    Text {
        id: hint

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        //: Keys and what they do, in one line at the end of the categories; there is not much room.
        //: "clear" lets go of the category that is chosen.
        text: qsTr("← → navigate  |  Esc clear")
        color: Theme.secondaryText
        font.pixelSize: 9
        font.weight: Font.Medium

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}

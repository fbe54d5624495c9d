pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// One chip for each template, in rows; rows that have no room are scrolled to.
Flickable {
    id: area

    /// A model with the role `name`.
    required property var names
    required property int highlightedIndex

    signal choose(int index)

    height: Math.min(chips.height, Theme.combineChipsHeight)
    contentHeight: chips.height
    visible: chips.height > 0
    clip: contentHeight > height
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds

    property Item highlightedChip: null
    readonly property real highlightedTop: highlightedChip ? highlightedChip.y : 0
    readonly property real highlightedBottom: highlightedChip ? highlightedTop + highlightedChip.height : 0

    function revealHighlighted() {
        const wanted = Math.max(Math.min(contentY, highlightedTop), highlightedBottom - height)
        contentY = Math.max(0, Math.min(wanted, contentHeight - height))
    }

    // Chips have their places, and the area its height, only when all of them have been laid out.
    onHighlightedTopChanged: revealHighlighted()
    onHighlightedBottomChanged: revealHighlighted()
    onHeightChanged: revealHighlighted()
    onContentHeightChanged: revealHighlighted()

    Flow {
        id: chips

        // The thumb is beside them.
        x: Theme.isMirrored ? area.width - width : 0
        width: area.width - (area.interactive ? 8 : 0)
        spacing: 6

        Repeater {
            id: repeater

            model: area.names

            delegate: RoundedBox {
                id: chip

                required property int index
                required property string name

                readonly property bool isHighlighted: index === area.highlightedIndex

                width: Math.min(Math.ceil(label.implicitWidth) + 20, chips.width)
                height: Math.max(22, Math.ceil(label.height) + 8)
                radius: Theme.combineChipRadius
                color: isHighlighted ? Theme.combineAccent : Theme.combineChip

                onIsHighlightedChanged: {
                    if (isHighlighted) {
                        area.highlightedChip = chip
                        ScreenReader.follow(chip)
                    }
                }

                Accessible.role: Accessible.Button
                Accessible.name: chip.name
                Accessible.checkable: true
                Accessible.checked: chip.isHighlighted
                Accessible.focused: chip.isHighlighted
                Accessible.onPressAction: area.choose(chip.index)

                Text {
                    id: label

                    anchors.centerIn: parent
                    width: chip.width - 20
                    text: chip.name
                    textFormat: Text.PlainText
                    color: chip.isHighlighted ? "white" : Theme.primaryText
                    font.pixelSize: 11
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                }

                MouseArea {
                    anchors.fill: parent
                    onClicked: area.choose(chip.index)
                }
            }
        }
    }

    ScrollThumb {
        view: area
    }
}

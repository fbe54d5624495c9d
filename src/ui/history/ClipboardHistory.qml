pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// The panel's content: a count and the list.
Rectangle {
    id: root

    required property ClipboardHistoryView view

    color: Theme.panel
    radius: Theme.panelRadius
    focus: true

    Keys.onPressed: event => event.accepted = root.view.handleKey(event.key)

    Text {
        id: count

        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: 20
        text: list.count === 1 ? "1 item" : list.count + " items"
        color: Theme.primaryText
        font.pixelSize: 14
        font.weight: Font.DemiBold
    }

    Rectangle {
        id: separator

        anchors.top: count.bottom
        anchors.topMargin: 16
        width: parent.width
        height: 1
        color: Theme.separator
    }

    ListView {
        id: list

        anchors.top: separator.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottomMargin: 2
        leftMargin: 16
        rightMargin: 16
        spacing: 12
        clip: true
        model: root.view.filteredItems
        topMargin: Theme.listMargin
        bottomMargin: Theme.listMargin
        currentIndex: root.view.selectedIndex
        highlightMoveDuration: 0
        highlightRangeMode: ListView.ApplyRange
        preferredHighlightBegin: Theme.listMargin
        preferredHighlightEnd: height - Theme.listMargin
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds

        Accessible.role: Accessible.List
        Accessible.name: "History"

        delegate: ClipboardItemRow {
            id: row

            width: list.width - list.leftMargin - list.rightMargin
            isSelected: row.index === root.view.selectedIndex
            onClicked: root.view.selectAndPaste(row.index)
        }

        Connections {
            target: root.view

            function onWasReset() {
                // positionViewAtBeginning would leave the margin out.
                list.contentY = list.originY - list.topMargin
            }
        }
    }

    Text {
        anchors.centerIn: list
        visible: list.count === 0
        text: "Copy something, and it is here."
        color: Theme.secondaryText
        font.pixelSize: 14
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        radius: root.radius
        border.width: 1
        border.color: Theme.panelBorder
    }
}

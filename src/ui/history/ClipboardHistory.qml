pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// The panel's content: a count, the search, the categories and the list.
FocusScope {
    id: root

    required property ClipboardHistoryView view

    focus: true

    Keys.onPressed: event => event.accepted = root.view.handleKey(event.key, event.modifiers, event.text)

    Connections {
        target: root.view

        function onFocusChanged() {
            if (root.view.focus === ClipboardHistoryView.Search)
                search.takeFocus()
            else if (root.view.focus === ClipboardHistoryView.View)
                list.forceActiveFocus()
        }

        function onWasReset() {
            // positionViewAtBeginning would leave the margin out.
            list.contentY = list.originY - list.topMargin
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
        radius: Theme.panelRadius
    }

    Column {
        id: head

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin
        anchors.topMargin: 14
        spacing: 12

        Text {
            text: list.count === 1 ? "1 item" : list.count + " items"
            color: Theme.primaryText
            font.pixelSize: 14
            font.weight: Font.DemiBold
        }

        SearchField {
            id: search

            width: parent.width
            visible: root.view.isSearchExpanded
            view: root.view
        }

        CategoryBar {
            width: parent.width
            view: root.view
        }
    }

    Rectangle {
        id: separator

        anchors.top: head.bottom
        anchors.topMargin: 10
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
        focus: true
        keyNavigationEnabled: false
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

        onActiveFocusChanged: {
            if (activeFocus)
                root.view.setFocus(ClipboardHistoryView.View)
            else
                root.view.endFocus(ClipboardHistoryView.View)
        }

        delegate: ClipboardItemRow {
            id: row

            width: list.width - list.leftMargin - list.rightMargin
            isSelected: row.index === root.view.selectedIndex
            onClicked: root.view.selectAndPaste(row.index)

            // A row that waits to be used again is still among the list's children, and would be read out.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
        }
    }

    Column {
        anchors.centerIn: list
        visible: list.count === 0
        spacing: 6

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "No items found"
            color: Theme.secondaryText
            font.pixelSize: 15
            font.weight: Font.DemiBold
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.view.searchText !== "" ? "Try a different search term" : "Copy something to get started"
            color: Theme.tertiaryText
            font.pixelSize: 12
        }
    }

    // On its own, over the fill: where windows are not composed, a thin line over nothing would be black.
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        radius: Theme.panelRadius
        border.width: 1
        border.color: Theme.panelBorder
    }
}

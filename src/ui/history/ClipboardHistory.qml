// Bound components are not created here by Qt 6.4, so that names are looked up as they ever were.
// qmllint disable unqualified
import QtQuick
import Larkspool.History
import Larkspool.Style

/// The panel's content: head and list; menus and the combine panel lie over them.
FocusScope {
    id: root

    required property ClipboardHistoryView view

    focus: true

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    Keys.onPressed: event => event.accepted = root.view.handleKey(event.key, event.modifiers, event.text)

    function takeFocus() {
        switch (root.view.focus) {
        case ClipboardHistoryView.View:
            list.forceActiveFocus()
            break
        case ClipboardHistoryView.Search:
            head.focusSearch()
            break
        case ClipboardHistoryView.CategorySearch:
            head.focusCategorySearch()
            break
        case ClipboardHistoryView.Create:
            if (createCard.item)
                (createCard.item as ItemEditor).takeFocus()
            break
        }
    }

    /// After something that lay over the panel has had it.
    function restoreFocus() {
        if (root.view.focus === ClipboardHistoryView.Elsewhere)
            list.forceActiveFocus()
        else
            root.takeFocus()
    }

    Connections {
        target: root.view

        function onFocusChanged() {
            if (!headerMenu.visible && !rowMenu.visible)
                root.takeFocus()
        }

        function onWasReset() {
            headerMenu.close()
            rowMenu.close()
            list.showBeginning()
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
        radius: Theme.panelRadius
    }

    PanelHead {
        id: head

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin
        anchors.topMargin: 14
        view: root.view
        count: list.count
        onMenuRequested: button => {
            const corner = root.mapFromItem(button, 0, button.height + 4)
            headerMenu.openBeside(corner.x + button.width, corner.x, corner.y)
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

    Loader {
        id: createCard

        anchors.top: separator.bottom
        anchors.topMargin: active ? Theme.listMargin - Theme.highlightBeyond : 0
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.highlightSide
        anchors.rightMargin: Theme.highlightSide
        active: root.view.isCreatingNew
        onLoaded: (item as ItemEditor).takeFocus()

        sourceComponent: ItemEditor {
            view: root.view
            symbol: "plus.circle.fill"
            //: The title of the card on which an entry is written.
            title: qsTr("New item")
            focusName: ClipboardHistoryView.Create
            text: root.view.newItemText
            onEdited: text => root.view.newItemText = text
            onCancelled: root.view.cancelCreate()
        }
    }

    HistoryList {
        id: list

        anchors.top: root.view.isCreatingNew ? createCard.bottom : separator.bottom
        anchors.topMargin: root.view.isCreatingNew ? Theme.highlightBeyond : 0
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottomMargin: 1
        view: root.view
        isHighlightMoved: head.isHighlightMoved
        onMenuRequested: (row, x, y) => {
            const place = root.mapFromItem(list, x, y)
            rowMenu.openFor(row, place.x, place.y)
        }
    }

    EmptyState {
        anchors.fill: list
        visible: list.count === 0 && !root.view.isCreatingNew
        isFirstStart: root.view.isHistoryEmpty && root.view.searchText === "" && !root.view.hasFilter
        isSearching: root.view.searchText !== ""
    }

    PopupMenu {
        id: headerMenu

        anchors.fill: parent
        title: qsTr("Menu")
        entries: [
            {text: qsTr("Settings..."), act: () => root.view.openSettings()},
            {text: qsTr("Clear All History"), isDestructive: true, act: () => root.view.clearAllHistory()},
            {isDivider: true},
            {text: qsTr("Quit Larkspool"), act: () => Qt.quit()}
        ]
        onClosed: root.restoreFocus()
    }

    RowMenu {
        id: rowMenu

        anchors.fill: parent
        view: root.view
        onClosed: root.restoreFocus()
    }

    CombineLayer {
        anchors.fill: parent
        panel: root.view.combinePanel
        onClosed: root.restoreFocus()
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

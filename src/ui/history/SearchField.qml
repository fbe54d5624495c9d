pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// The text that is sought in the history.
Rectangle {
    id: field

    required property ClipboardHistoryView view

    height: 34
    color: Theme.field
    radius: 9

    function takeFocus() {
        input.forceActiveFocus()
    }

    Symbol {
        id: glass

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        size: 15
        color: Theme.secondaryText
    }

    TextInput {
        id: input

        anchors.left: glass.right
        anchors.right: parent.right
        anchors.leftMargin: 8
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: field.view.searchText
        color: Theme.primaryText
        selectionColor: Theme.selection
        selectedTextColor: "white"
        font.pixelSize: 14
        clip: true
        selectByMouse: true

        Accessible.role: Accessible.EditableText
        Accessible.name: placeholder.text

        Keys.priority: Keys.BeforeItem
        Keys.onPressed: event => event.accepted = field.view.handleKey(event.key, event.modifiers, event.text)

        onTextEdited: field.view.searchText = text
        onActiveFocusChanged: {
            if (activeFocus)
                field.view.setFocus(ClipboardHistoryView.Search)
            else
                field.view.endFocus(ClipboardHistoryView.Search)
        }

        Text {
            id: placeholder

            anchors.fill: parent
            visible: input.length === 0 && input.preeditText === ""
            text: "Search..."
            color: Theme.tertiaryText
            font: input.font
        }
    }
}

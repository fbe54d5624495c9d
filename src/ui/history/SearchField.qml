pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// A line of text that narrows what is listed; its keys go to the view first.
Rectangle {
    id: field

    required property ClipboardHistoryView view
    required property string symbol
    required property string placeholder
    /// What the view calls its focus.
    required property int focusName
    required property string text
    /// Whether a screen reader is to hear of something else though the keys come here.
    property bool isAside: false

    signal edited(string text)

    height: Theme.fieldHeight
    color: Theme.field
    radius: Theme.fieldRadius

    // At once: a letter may come before the view gives it the focus.
    onVisibleChanged: {
        if (visible)
            takeFocus()
    }

    onIsAsideChanged: ScreenReader.follow(input)

    function takeFocus() {
        input.forceActiveFocus()
    }

    Symbol {
        id: sign

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: field.symbol
        size: 16
        color: Theme.secondaryText
    }

    TextInput {
        id: input

        anchors.left: sign.right
        anchors.right: parent.right
        anchors.leftMargin: 8
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: field.text
        color: Theme.primaryText
        selectionColor: Theme.selection
        selectedTextColor: "white"
        font.pixelSize: 14
        clip: true
        selectByMouse: true

        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder
        Accessible.focused: input.activeFocus && !field.isAside

        Keys.priority: Keys.BeforeItem
        Keys.onPressed: event => event.accepted = field.view.handleKey(event.key, event.modifiers, event.text)

        onTextEdited: field.edited(text)
        onActiveFocusChanged: {
            if (activeFocus)
                field.view.setFocus(field.focusName)
            else
                field.view.endFocus(field.focusName)
        }

        Text {
            anchors.fill: parent
            visible: input.length === 0 && input.preeditText === ""
            text: field.placeholder
            color: Theme.tertiaryText
            font: input.font
            horizontalAlignment: Text.AlignLeft
            elide: Text.ElideRight
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// One category: its symbol on its colour, its name, and what can be done to it.
Item {
    id: row

    required property int index
    required property string name
    required property color categoryColor
    required property string icon
    required property bool isDefault
    required property CategoryManagerView manager
    required property int count

    readonly property real widestName: {
        const before = SettingsTheme.groupPadding + sign.width + 10
        const behind = (badge.visible ? badge.width + 16 : 8) + buttons.width + 8
        return width - before - behind
    }
    readonly property bool hasKeyboard: up.activeFocus || down.activeFocus || edit.activeFocus || remove.activeFocus

    signal tipRequested(button: T.AbstractButton, text: string)
    /// By a key, or with the pointer.
    signal deletionRequested(isByKey: bool)

    function focusDelete() {
        remove.forceActiveFocus(Qt.TabFocusReason)
    }

    function showIfReached() {
        if (hasKeyboard)
            ListView.view.positionViewAtIndex(index, ListView.Contain)
    }

    height: 40

    onHasKeyboardChanged: showIfReached()
    // Once it has been moved.
    onIndexChanged: moved.restart()

    Timer {
        id: moved

        interval: 0
        onTriggered: row.showIfReached()
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: row.name
    //: Of a category: one of those that the program has made.
    Accessible.description: row.isDefault ? qsTr("Default") : ""

    Rectangle {
        id: sign

        anchors.left: parent.left
        anchors.leftMargin: SettingsTheme.groupPadding
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        radius: 13
        color: row.categoryColor

        Symbol {
            anchors.centerIn: parent
            name: row.icon
            size: 14
            color: "white"
        }
    }

    Text {
        id: label

        anchors.left: sign.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, row.widestName)
        horizontalAlignment: Text.AlignLeft
        // In one line, whatever the name holds.
        text: row.name.replace(/[\u0000-\u001f\u007f-\u009f\u2028\u2029]+/g, " ")
        textFormat: Text.PlainText
        color: Theme.primaryText
        font.pixelSize: SettingsTheme.formText
        elide: Text.ElideRight
        maximumLineCount: 1

        Accessible.ignored: true
    }

    Rectangle {
        id: badge

        anchors.left: label.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: badgeText.implicitWidth + 12
        height: badgeText.implicitHeight + 4
        visible: row.isDefault
        radius: height / 2
        color: SettingsTheme.control

        Text {
            id: badgeText

            anchors.centerIn: parent
            //: Of a category: one of those that the program has made.
            text: qsTr("Default")
            color: Theme.secondaryText
            font.pixelSize: 10

            Accessible.ignored: true
        }
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        IconButton {
            id: up

            symbol: "chevron.up"
            text: qsTr("Move Up")
            symbolColor: row.index > 0 ? Theme.secondaryText : Theme.tertiaryText
            onClicked: row.manager.moveCategory(row.index, -1)
            onHoveredChanged: row.tipRequested(this, text)
        }

        IconButton {
            id: down

            symbol: "chevron.down"
            text: qsTr("Move Down")
            symbolColor: row.index < row.count - 1 ? Theme.secondaryText : Theme.tertiaryText
            onClicked: row.manager.moveCategory(row.index, 1)
            onHoveredChanged: row.tipRequested(this, text)
        }

        IconButton {
            id: edit

            symbol: "pencil"
            text: qsTr("Edit")
            onClicked: row.manager.edit(row.index)
            onHoveredChanged: row.tipRequested(this, text)
        }

        IconButton {
            id: remove

            symbol: "trash"
            text: qsTr("Delete")
            symbolColor: Theme.deleteSymbol
            onClicked: row.deletionRequested(visualFocus)
            onHoveredChanged: row.tipRequested(this, text)
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        x: SettingsTheme.groupPadding
        width: parent.width - 2 * x
        height: 1
        visible: row.index < row.count - 1
        color: Theme.separator
    }
}

import QtQuick
import Larkspool.History
import Larkspool.Style

/// One entry of a menu, or a line between two.
Item {
    id: row

    required property int index
    required property var modelData
    property bool isCurrent: false
    /// Whether the keys go to it: not while its own submenu is open.
    property bool isFocused: false
    /// Whether the menu keeps a column for marks.
    property bool hasMarks: false

    readonly property bool isDivider: modelData.isDivider === true
    readonly property bool isLit: isCurrent && !isDivider
    readonly property color ink: isLit ? "white" : modelData.isDestructive ? Theme.destructive : Theme.primaryText

    signal entered
    signal chosen

    /// What the label leaves free: where the row begins, and where it ends.
    readonly property int beginning: hasMarks ? 26 : 10
    readonly property int ending: modelData.entries === undefined ? 10 : 24

    onIsFocusedChanged: ScreenReader.follow(row)

    implicitWidth: label.implicitWidth + beginning + ending
    height: isDivider ? 9 : 28

    Accessible.role: row.isDivider ? Accessible.Separator : Accessible.MenuItem
    Accessible.name: label.text
    Accessible.checkable: row.modelData.isChecked !== undefined
    Accessible.checked: row.modelData.isChecked === true
    Accessible.selected: row.isLit
    Accessible.focused: row.isFocused
    Accessible.onPressAction: row.chosen()

    Rectangle {
        anchors.fill: parent
        visible: row.isLit
        radius: 6
        color: Theme.selection
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        visible: row.isDivider
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Symbol {
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: row.modelData.isChecked === true
        name: "checkmark"
        size: 12
        color: row.ink
    }

    Text {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: row.beginning
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, row.width - row.beginning - row.ending)
        visible: !row.isDivider
        text: row.isDivider ? "" : row.modelData.text
        elide: Text.ElideRight
        textFormat: Text.PlainText
        color: row.ink
        font.pixelSize: 13
    }

    Text {
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: row.modelData.entries !== undefined
        text: Theme.isMirrored ? "‹" : "›"
        color: row.ink
        font.pixelSize: 15
    }

    MouseArea {
        anchors.fill: parent
        enabled: !row.isDivider
        hoverEnabled: true
        // Not when the menu opens under a pointer that rests.
        onPositionChanged: row.entered()
        onClicked: row.chosen()
    }
}

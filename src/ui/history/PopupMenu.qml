pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.Style

/// A menu over the panel. Entries are objects: `text`; `act`, what choosing it does; `isDestructive`; `isChecked`;
/// `entries`, a submenu's; or `isDivider` alone. Keys: Up, Down, Return, Right into a submenu, Left and Escape out.
FocusScope {
    id: menu

    property var entries: []
    property int current: -1
    property string title: ""
    readonly property bool hasMarks: entries.some(entry => entry.isChecked !== undefined)

    signal closed

    visible: false
    z: 10

    function openAt(x: real, y: real) {
        current = -1
        visible = true
        sheet.x = Math.max(8, Math.min(x, width - sheet.width - 8))
        sheet.y = Math.max(8, Math.min(y, height - sheet.height - 8))
        forceActiveFocus()
    }

    function close() {
        if (!visible)
            return
        submenu.active = false
        visible = false
        closed()
    }

    function choose(index: int) {
        const entry = entries[index]
        if (!entry || entry.isDivider)
            return
        current = index
        if (entry.entries) {
            submenu.openFor(index)
            return
        }
        close()
        entry.act()
    }

    function move(distance: int) {
        let index = current
        do {
            index += distance
        } while (index >= 0 && index < entries.length && entries[index].isDivider)
        if (index >= 0 && index < entries.length)
            current = index
    }

    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_Down)
            menu.move(1)
        else if (event.key === Qt.Key_Up)
            menu.move(-1)
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
            menu.choose(menu.current)
        else if (event.key === Qt.Key_Right && menu.current >= 0 && menu.entries[menu.current].entries)
            menu.choose(menu.current)
        else if (event.key === Qt.Key_Escape || event.key === Qt.Key_Left)
            menu.close()
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: menu.close()
    }

    Rectangle {
        id: sheet

        width: Math.max(150, rows.implicitWidth + 12)
        height: rows.height + 12
        radius: 9
        color: Theme.menu
        border.width: 1
        border.color: Theme.menuBorder

        Accessible.role: Accessible.PopupMenu
        Accessible.name: menu.title

        Column {
            id: rows

            x: 6
            y: 6
            width: sheet.width - 12

            Repeater {
                model: menu.entries

                delegate: MenuRow {
                    width: rows.width
                    isCurrent: index === menu.current
                    hasMarks: menu.hasMarks
                    onEntered: menu.current = index
                    onChosen: menu.choose(index)
                }
            }
        }
    }

    Loader {
        id: submenu

        anchors.fill: parent
        active: false
        // A menu in a menu, made when it is wanted.
        source: active ? "PopupMenu.qml" : ""

        function openFor(index: int) {
            active = true
            item.entries = menu.entries[index].entries.map(entry => Object.assign({}, entry, {
                act: () => {
                    menu.close()
                    entry.act()
                }
            }))
            item.title = menu.entries[index].text
            item.openAt(sheet.x + sheet.width - 8, sheet.y + rows.children[index].y)
        }

        Connections {
            target: submenu.item
            ignoreUnknownSignals: true

            function onClosed() {
                // Else the focus would stay with it.
                submenu.active = false
                menu.forceActiveFocus()
            }
        }
    }
}

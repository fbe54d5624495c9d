pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// A menu over the panel. Entries are objects: `text`; `act`, what choosing it does; `isDestructive`; `isChecked`;
/// `entries`, a submenu's; or `isDivider` alone. Keys: Up, Down, Return, Right into a submenu, Left and Escape out; Left
/// and Right change places where the layout is mirrored.
FocusScope {
    id: menu

    property var entries: []
    property int current: -1
    property string title: ""
    /// Where its corner is to be, if there is room.
    property point corner
    property real widestRow: 0
    /// Whether the keys go to none of its rows.
    readonly property bool isFocused: visible && current < 0
    readonly property bool hasMarks: entries.some(entry => entry.isChecked !== undefined)

    signal closed

    onIsFocusedChanged: ScreenReader.follow(sheet)

    visible: false
    z: 10

    function openAt(x: real, y: real) {
        openBeside(x, x, y)
    }

    /// To the right of `right`; when there is no room, to the left of `left`. The other way round where the layout is
    /// mirrored.
    function openBeside(left: real, right: real, y: real) {
        current = -1
        widestRow = 0
        for (let index = 0; index < repeater.count; ++index)
            widestRow = Math.max(widestRow, repeater.itemAt(index).implicitWidth)
        const hasRoomRight = right + sheet.width + 8 <= width
        const hasRoomLeft = left - sheet.width >= 8
        const isRight = Theme.isMirrored ? !hasRoomLeft && hasRoomRight : hasRoomRight || !hasRoomLeft
        corner = Qt.point(isRight ? right : left - sheet.width, y)
        visible = true
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
        if (current >= 0)
            page.reveal(repeater.itemAt(current))
    }

    Keys.onPressed: event => {
        const inKey = Theme.isMirrored ? Qt.Key_Left : Qt.Key_Right
        const outKey = Theme.isMirrored ? Qt.Key_Right : Qt.Key_Left
        event.accepted = true
        if (event.key === Qt.Key_Down)
            menu.move(1)
        else if (event.key === Qt.Key_Up)
            menu.move(-1)
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
            menu.choose(menu.current)
        else if (event.key === inKey && menu.current >= 0 && menu.entries[menu.current].entries)
            menu.choose(menu.current)
        else if (event.key === Qt.Key_Escape || event.key === outKey)
            menu.close()
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: menu.close()
    }

    CardFace {
        id: sheet

        // Its height is known when its rows have been laid out.
        x: Math.max(8, Math.min(menu.corner.x, menu.width - width - 8))
        y: Math.max(8, Math.min(menu.corner.y, menu.height - height - 8))
        width: Math.min(Math.max(150, Math.ceil(menu.widestRow) + 12), menu.width - 16)
        height: page.height + 12
        radius: Theme.menuRadius
        color: Theme.menu
        sidebarColor: Theme.menu
        sidebarWidth: Theme.menuRadius
        borderWidth: 1
        borderColor: Theme.menuBorder
        shadowColor: Qt.alpha("black", Theme.shadowOpacity)
        shadowRadius: Theme.menuShadowRadius
        shadowOffset: Theme.menuShadowOffset

        Accessible.role: Accessible.PopupMenu
        Accessible.name: menu.title
        Accessible.focused: menu.isFocused

        Flickable {
            id: page

            x: 6
            y: 6
            width: sheet.width - 12
            height: Math.min(rows.height, menu.height - 28)
            contentHeight: rows.height
            clip: interactive
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds

            function reveal(row: Item) {
                contentY = Math.max(Math.min(contentY, row.y), row.y + row.height - height)
            }

            Column {
                id: rows

                width: page.width

                Repeater {
                    id: repeater

                    model: menu.entries

                    delegate: MenuRow {
                        width: rows.width
                        isCurrent: index === menu.current
                        isFocused: isCurrent && menu.visible && !submenu.active
                        hasMarks: menu.hasMarks
                        onEntered: menu.current = index
                        onChosen: menu.choose(index)
                    }
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
            item.openBeside(sheet.x + 4, sheet.x + sheet.width - 4, sheet.y + repeater.itemAt(index).y - page.contentY)
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

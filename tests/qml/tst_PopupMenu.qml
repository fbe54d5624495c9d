import QtQuick
import QtTest
import Larkspool.History

Item {
    id: window

    width: 300
    height: 200

    Component {
        id: menus

        PopupMenu {
            anchors.fill: parent
        }
    }

    TestCase {
        name: "PopupMenu"
        when: windowShown

        property string chosen: ""

        function entries(count: int): var {
            const made = []
            for (let i = 0; i < count; ++i)
                made.push({text: "Entry " + i, act: () => chosen = "Entry " + i})
            return made
        }

        function opened(properties: var, x: real, y: real): var {
            const menu = createTemporaryObject(menus, window, properties)
            menu.openAt(x, y)
            waitForRendering(menu)
            return menu
        }

        function childOf(item: Item, test: var): Item {
            for (let i = 0; i < item.children.length; ++i) {
                if (test(item.children[i]))
                    return item.children[i]
            }
            return null
        }

        function sheet(menu: Item): Item {
            return childOf(menu, child => child instanceof CardFace)
        }

        /// The item that shows the text, itself or in what it holds.
        function shows(item: Item, text: string): bool {
            if (item.visible && item.text === text)
                return true
            return childOf(item, child => shows(child, text)) !== null
        }

        /// The rows that are wholly in sight.
        function rowsInSight(menu: Item): var {
            const box = sheet(menu)
            const found = []
            const visit = item => {
                for (let i = 0; i < item.children.length; ++i) {
                    const child = item.children[i]
                    if (child instanceof MenuRow) {
                        const top = child.mapToItem(box, 0, 0).y
                        if (top >= 0 && top + child.height <= box.height)
                            found.push(child.modelData.text)
                    }
                    visit(child)
                }
            }
            visit(box)
            return found
        }

        function init() {
            failOnWarning(/.?/)
            chosen = ""
        }

        function test_opensAtThePlaceWhenThereIsRoom() {
            const box = sheet(opened({entries: entries(3)}, 40, 30))
            compare(box.x, 40)
            compare(box.y, 30)
        }

        function test_staysWithinThePanelWhenItIsOpenedForTheFirstTimeInACorner() {
            const box = sheet(opened({entries: entries(5)}, 295, 195))
            compare(box.x + box.width, window.width - 8)
            compare(box.y + box.height, window.height - 8)
        }

        function test_isNoWiderThanThePanelHoweverLongAName() {
            const name = "Rechtsschutzversicherungsgesellschaften ".repeat(5)
            const box = sheet(opened({entries: [{text: name, act: () => {}}]}, 10, 10))
            compare(box.x, 8)
            compare(box.width, window.width - 16)
        }

        function test_isNoHigherThanThePanelHoweverManyEntries() {
            const menu = opened({entries: entries(30)}, 10, 10)
            const box = sheet(menu)
            compare(box.y, 8)
            compare(box.height, window.height - 16)
            verify(rowsInSight(menu).includes("Entry 0"))
            verify(!rowsInSight(menu).includes("Entry 29"))
        }

        function test_keysReachEntriesThatHaveNoRoom() {
            const menu = opened({entries: entries(30)}, 10, 10)
            for (let i = 0; i < 30; ++i)
                keyClick(Qt.Key_Down)
            verify(rowsInSight(menu).includes("Entry 29"))
            verify(!rowsInSight(menu).includes("Entry 0"))
            keyClick(Qt.Key_Return)
            compare(chosen, "Entry 29")
        }

        function test_aSubmenuIsBesideItsRow() {
            const all = entries(2)
            all.push({text: "More", entries: [{text: "Inner", act: () => chosen = "Inner"}]})
            const menu = opened({entries: all}, 0, 20)
            for (let i = 0; i < 3; ++i)
                keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Right)
            const inner = childOf(menu, child => child instanceof Loader).item
            waitForRendering(inner)
            const box = sheet(inner)
            compare(box.y, sheet(menu).y + 2 * 28)
            verify(shows(box, "Inner"))
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Return)
            compare(chosen, "Inner")
            verify(!menu.visible)
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// The page of the categories: the list, and the form of one over it.
Item {
    id: page

    required property CategoryManagerView manager

    function deleteCategory(row: int, isByKey: bool) {
        page.manager.deleteCategory(row)
        if (isByKey)
            page.focusAfterDeletion(row)
    }

    /// The focus that was on the row's button goes to that of the row in its place.
    function focusAfterDeletion(row: int) {
        // The row that is gone has its place until the list is laid out.
        list.forceLayout()
        const next = list.itemAtIndex(Math.min(row, list.count - 1)) as CategoryRow
        if (next)
            next.focusDelete()
        else
            add.forceActiveFocus(Qt.TabFocusReason)
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: SettingsTheme.margin
        anchors.bottomMargin: 56
        radius: SettingsTheme.groupRadius
        color: SettingsTheme.group
        border.width: 1
        border.color: SettingsTheme.groupBorder

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: 1
            clip: true
            model: page.manager.categories
            boundsBehavior: Flickable.StopAtBounds
            // The focus is on the buttons of the rows, never on a row.
            currentIndex: -1
            keyNavigationEnabled: false

            Accessible.role: Accessible.List
            Accessible.name: qsTr("Categories")

            delegate: CategoryRow {
                width: list.width
                manager: page.manager
                count: list.count
                onTipRequested: (button, text) => tip.show(button, text)
                onDeletionRequested: isByKey => page.deleteCategory(index, isByKey)
            }
        }

        Rectangle {
            anchors.right: parent.right
            anchors.rightMargin: 3
            y: list.y + 4 + list.visibleArea.yPosition * (list.height - 8)
            width: 3
            height: Math.max(12, list.visibleArea.heightRatio * (list.height - 8))
            visible: list.visibleArea.heightRatio < 1
            radius: width / 2
            color: Theme.tertiaryText
        }

        Text {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTr("No categories")
            color: Theme.secondaryText
            font.pixelSize: SettingsTheme.formText
        }
    }

    T.AbstractButton {
        id: add

        anchors.left: parent.left
        // The symbol stands below the edge of the list, the place around it beyond.
        anchors.leftMargin: SettingsTheme.margin - 6
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        width: implicitContentWidth
        height: SettingsTheme.controlHeight
        focusPolicy: Qt.StrongFocus
        text: qsTr("Add &new category")

        Accessible.name: text.replace("&", "")

        onClicked: page.manager.addNew()
        Keys.onReturnPressed: event => event.isAutoRepeat || add.clicked()
        Keys.onEnterPressed: event => event.isAutoRepeat || add.clicked()

        contentItem: Row {
            leftPadding: 6
            rightPadding: 6
            spacing: 7

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "plus.circle.fill"
                size: 17
                color: SettingsTheme.accent
            }

            ControlText {
                anchors.verticalCenter: parent.verticalCenter
                label: add.text
            }
        }

        background: Rectangle {
            radius: SettingsTheme.controlRadius
            color: add.hovered ? Theme.hoveredButton : "transparent"

            FocusRing {
                visible: add.visualFocus
                radius: SettingsTheme.controlRadius + 3
            }
        }
    }

    PushButton {
        anchors.right: parent.right
        anchors.rightMargin: SettingsTheme.margin
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        label: qsTr("&Restore Defaults")
        onClicked: page.manager.resetDefaultCategories()
    }

    T.ToolTip {
        id: tip

        property T.AbstractButton button: null

        function show(target: T.AbstractButton, text: string) {
            button = target
            tip.text = text
        }

        parent: (button ?? page) as Item
        visible: button !== null && button.hovered && !button.down
        delay: 500
        // The button may go while its tip is shown, with its row.
        x: ((parent?.width ?? 0) - width) / 2
        y: -height - 3
        padding: 6
        implicitWidth: implicitContentWidth + 12
        implicitHeight: implicitContentHeight + 8

        contentItem: Text {
            text: tip.text
            color: Theme.primaryText
            font.pixelSize: SettingsTheme.helpText
        }

        background: Rectangle {
            radius: 5
            color: Theme.menu
            border.width: 1
            border.color: Theme.menuBorder
        }
    }

    CategoryForm {
        manager: page.manager
        title: page.manager.isEditing ? qsTr("Edit Category") : qsTr("New Category")
        visible: page.manager.isAddingNew || page.manager.isEditing
    }
}

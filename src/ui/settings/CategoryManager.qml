pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// The page of the categories: the list, and the form of one over it.
Item {
    id: page

    required property CategoryManagerView manager

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.settingsMargin
        anchors.bottomMargin: 56
        radius: Theme.groupRadius
        color: Theme.group
        border.width: 1
        border.color: Theme.groupBorder

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: 1
            clip: true
            model: page.manager.categories
            boundsBehavior: Flickable.StopAtBounds

            Accessible.role: Accessible.List
            Accessible.name: qsTr("Categories")

            delegate: CategoryRow {
                width: list.width
                manager: page.manager
                count: list.count
                onTipRequested: (button, text) => tip.show(button, text)
            }
        }

        Text {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTr("No categories")
            color: Theme.secondaryText
            font.pixelSize: Theme.formText
        }
    }

    T.AbstractButton {
        id: add

        anchors.left: parent.left
        anchors.leftMargin: Theme.settingsMargin
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        width: implicitContentWidth + 12
        height: Theme.controlHeight
        focusPolicy: Qt.StrongFocus
        text: qsTr("Add &new category")

        Accessible.name: text.replace("&", "")

        onClicked: page.manager.addNew()
        Keys.onReturnPressed: add.click()
        Keys.onEnterPressed: add.click()

        contentItem: Row {
            leftPadding: 6
            spacing: 7

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "plus.circle.fill"
                size: 17
                color: Theme.accent
            }

            ControlText {
                anchors.verticalCenter: parent.verticalCenter
                label: add.text
            }
        }

        background: Rectangle {
            radius: Theme.controlRadius
            color: add.hovered ? Theme.hoveredButton : "transparent"

            FocusRing {
                visible: add.visualFocus
                radius: Theme.controlRadius + 3
            }
        }
    }

    PushButton {
        anchors.right: parent.right
        anchors.rightMargin: Theme.settingsMargin
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        text: qsTr("&Restore Defaults")
        onClicked: page.manager.resetDefaultCategories()
    }

    T.ToolTip {
        id: tip

        property T.AbstractButton button: null

        function show(target: T.AbstractButton, text: string) {
            button = target
            tip.text = text
        }

        parent: button ?? page
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
            font.pixelSize: Theme.helpText
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

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// The sheet on which a category gets its name and colour. Keys: Return saves, Escape cancels.
T.Popup {
    id: form

    required property CategoryManagerView manager
    required property string title

    anchors.centerIn: T.Overlay.overlay
    width: 392
    padding: 20
    implicitHeight: implicitContentHeight + 2 * padding
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose

    onAboutToShow: name.forceActiveFocus()
    onOpened: name.selectAll()

    T.Overlay.modal: Rectangle {
        color: SettingsTheme.veil
    }

    background: Rectangle {
        radius: 12
        color: SettingsTheme.window
        border.width: 1
        border.color: Theme.menuBorder
    }

    // The ids in it make it be there at once, which it is to be.
    contentItem: Column { // qmllint disable deferred-property-id
        spacing: 14

        // It lies over the window, not in the page.
        LayoutMirroring.enabled: Theme.isMirrored
        LayoutMirroring.childrenInherit: true

        Accessible.role: Accessible.Dialog
        Accessible.name: form.title

        Keys.onEscapePressed: form.manager.cancelForm()
        Keys.onReturnPressed: form.manager.saveForm()
        Keys.onEnterPressed: form.manager.saveForm()

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: form.title
            color: Theme.primaryText
            font.pixelSize: 15
            font.weight: Font.DemiBold

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Row {
            width: parent.width
            spacing: 12

            ControlText {
                id: nameLabel

                height: name.height
                verticalAlignment: Text.AlignVCenter
                //: The label of the field for the name of a category.
                label: qsTr("Name")
            }

            TextEntry {
                id: name

                width: parent.width - nameLabel.width - parent.spacing
                text: form.manager.newName
                //: In an empty field in which the name is typed.
                placeholderText: qsTr("Category name")
                onTextEdited: form.manager.newName = text

                Accessible.name: qsTr("Name")
            }
        }

        SwatchRow {
            anchors.left: parent.left
            side: SettingsTheme.paletteCircle
            spacing: 5
            colors: form.manager.palette
            value: form.manager.newColorHex
            onChosen: value => form.manager.newColorHex = value

            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("Color")
        }

        Row {
            anchors.right: parent.right
            spacing: 8

            PushButton {
                label: qsTr("Cancel")
                onClicked: form.manager.cancelForm()
            }

            PushButton {
                label: qsTr("Save")
                isProminent: true
                enabled: form.manager.canSave
                onClicked: form.manager.saveForm()
            }
        }
    }
}

import QtQuick
import Larkspool.Settings

Item {
    id: page

    required property SettingsView view

    FormGroup {
        x: SettingsTheme.margin
        y: SettingsTheme.margin
        width: page.width - 2 * SettingsTheme.margin

        Toggle {
            label: qsTr("&Launch at login")
            checked: page.view.launchAtLogin
            onToggled: page.view.launchAtLogin = checked
        }

        FormLine {}

        Toggle {
            label: qsTr("Show source app &name")
            checked: page.view.showSourceApp
            onToggled: page.view.showSourceApp = checked
        }

        FormLine {}

        Toggle {
            label: qsTr("&Play sound on copy")
            checked: page.view.playSoundOnCopy
            onToggled: page.view.playSoundOnCopy = checked
        }

        FormLine {}

        Toggle {
            label: qsTr("Play clic&k sound on navigation")
            checked: page.view.playSoundOnNavigate
            onToggled: page.view.playSoundOnNavigate = checked
        }

        FormLine {}

        Item {
            width: parent.width
            height: Math.max(SettingsTheme.formRow + 6, label.implicitHeight + 14)

            ControlText {
                id: label

                anchors.left: parent.left
                anchors.right: swatches.left
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                label: qsTr("Selected item border color")
                elide: Text.ElideNone
                wrapMode: Text.Wrap
            }

            SwatchRow {
                id: swatches

                anchors.right: parent.right
                anchors.rightMargin: -4
                anchors.verticalCenter: parent.verticalCenter
                colors: page.view.borderColorOptions
                value: page.view.borderColorHex
                onChosen: value => page.view.borderColorHex = value

                Accessible.role: Accessible.Grouping
                Accessible.name: qsTr("Selected item border color")
            }
        }
    }
}

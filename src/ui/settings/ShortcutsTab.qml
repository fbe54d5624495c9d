import QtQuick
import Larkspool.Settings

Item {
    id: page

    required property SettingsView view

    Column {
        x: SettingsTheme.margin
        y: SettingsTheme.margin
        width: page.width - 2 * SettingsTheme.margin
        spacing: 22

        FormGroup {
            title: qsTr("Global Shortcut")
            help: qsTr("Press the key combination to open Larkspool from anywhere.")

            ShortcutRecorder {
                recorder: page.view.shortcutRecorder
            }
        }

        FormGroup {
            title: qsTr("In-App Shortcuts")
            help: qsTr("Opens the category filter search when Larkspool is open.")

            Picker {
                label: qsTr("Category search")
                choices: page.view.categorySearchChoices
                value: page.view.categorySearchKey
                onChosen: value => page.view.categorySearchKey = value
            }
        }
    }
}

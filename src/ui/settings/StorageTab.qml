import QtQuick
import Larkspool.Settings
import Larkspool.Style

Item {
    id: page

    required property SettingsView view

    Column {
        x: Theme.settingsMargin
        y: Theme.settingsMargin
        width: page.width - 2 * Theme.settingsMargin
        spacing: 16

        FormGroup {
            Picker {
                label: qsTr("Max history items")
                choices: page.view.maxHistoryChoices
                value: page.view.maxHistoryCount
                onChosen: value => page.view.maxHistoryCount = value
            }
        }

        FormGroup {
            Item {
                width: parent.width
                height: Theme.formRow + 6

                PushButton {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Clear All &History")
                    isDestructive: true
                    onClicked: page.view.clearAllHistory()
                }
            }
        }
    }
}

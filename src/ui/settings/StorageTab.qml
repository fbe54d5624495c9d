import QtQuick
import Larkspool.Settings

Item {
    id: page

    required property SettingsView view

    Column {
        x: SettingsTheme.margin
        y: SettingsTheme.margin
        width: page.width - 2 * SettingsTheme.margin
        spacing: 16

        FormGroup {
            Picker {
                //: How many entries are kept at most; a number is chosen beside it.
                label: qsTr("Max history items")
                choices: page.view.maxHistoryChoices
                value: page.view.maxHistoryCount
                onChosen: value => page.view.maxHistoryCount = value
            }
        }

        FormGroup {
            Item {
                width: parent.width
                height: SettingsTheme.formRow + 6

                PushButton {
                    anchors.left: parent.left
                    anchors.verticalCenter: parent.verticalCenter
                    label: qsTr("Clear All &History")
                    isDestructive: true
                    onClicked: page.view.clearAllHistory()
                }
            }
        }
    }
}

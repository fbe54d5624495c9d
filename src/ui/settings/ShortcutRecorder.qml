import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A row of a form that shows a key combination and records another one.
Item {
    id: row

    required property ShortcutRecorderView recorder

    width: parent ? parent.width : 0
    height: SettingsTheme.formRow + 6

    ControlText {
        anchors.left: parent.left
        anchors.right: combination.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        label: row.recorder.label
    }

    T.Button {
        id: combination

        anchors.right: cancel.visible ? cancel.left : parent.right
        anchors.rightMargin: cancel.visible ? 8 : 0
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(96, implicitContentWidth + 24)
        height: SettingsTheme.controlHeight + 2
        focusPolicy: Qt.StrongFocus
        text: row.recorder.displayString

        Accessible.name: row.recorder.label
        Accessible.description: text

        onClicked: {
            if (!row.recorder.isRecording)
                row.recorder.startRecording()
        }
        Keys.onReturnPressed: event => event.isAutoRepeat || combination.clicked()
        Keys.onEnterPressed: event => event.isAutoRepeat || combination.clicked()

        contentItem: ControlText {
            label: combination.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            font.family: Theme.monospaced
        }

        background: Rectangle {
            radius: 6
            color: row.recorder.isRecording ? Qt.alpha(SettingsTheme.accent, 0.2)
                : combination.hovered ? SettingsTheme.hoveredControl : SettingsTheme.control
            border.width: row.recorder.isRecording ? 1.5 : 0
            border.color: SettingsTheme.accent

            FocusRing {
                visible: combination.visualFocus && !row.recorder.isRecording
                radius: 9
            }
        }
    }

    PushButton {
        id: cancel

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: row.recorder.isRecording
        label: qsTr("Cancel")
        onClicked: row.recorder.stopRecording()
    }
}

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A button with a word on it.
T.Button {
    id: control

    /// With an "&" before the letter of the access key, where it has one.
    required property string label
    property bool isDestructive: false
    property bool isProminent: false

    implicitWidth: Math.max(72, implicitContentWidth + 28)
    implicitHeight: SettingsTheme.controlHeight
    focusPolicy: Qt.StrongFocus
    text: label.replace("&", "")
    opacity: enabled ? 1 : 0.45

    Keys.onReturnPressed: event => event.isAutoRepeat || control.clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || control.clicked()

    Shortcut {
        enabled: control.label.includes("&")
        autoRepeat: false
        sequence: "Alt+" + control.label.charAt(control.label.indexOf("&") + 1)
        onActivated: control.clicked()
    }

    contentItem: ControlText {
        label: control.label
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: control.isDestructive ? Theme.destructive : control.isProminent ? SettingsTheme.accentText : Theme.primaryText
    }

    background: Rectangle {
        radius: SettingsTheme.controlRadius
        color: control.isProminent ? (control.down ? Qt.darker(SettingsTheme.accent, 1.12) : SettingsTheme.accent)
            : control.hovered || control.down ? SettingsTheme.hoveredControl : SettingsTheme.control
        border.width: 1
        border.color: SettingsTheme.controlBorder

        FocusRing {
            visible: control.visualFocus
            radius: SettingsTheme.controlRadius + 3
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A button with a word on it.
T.Button {
    id: control

    property bool isDestructive: false
    property bool isProminent: false

    implicitWidth: Math.max(72, implicitContentWidth + 28)
    implicitHeight: SettingsTheme.controlHeight
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45

    Accessible.name: text.replace("&", "")

    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: ControlText {
        label: control.text
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

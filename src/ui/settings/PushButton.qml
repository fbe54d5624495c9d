import QtQuick
import QtQuick.Templates as T
import Larkspool.Style

/// A button with a word on it.
T.Button {
    id: control

    property bool isDestructive: false
    property bool isProminent: false

    implicitWidth: Math.max(72, implicitContentWidth + 28)
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45

    Accessible.name: text.replace("&", "")

    Keys.onReturnPressed: control.click()
    Keys.onEnterPressed: control.click()

    contentItem: ControlText {
        label: control.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: control.isDestructive ? Theme.destructive : control.isProminent ? "#1c1c1e" : Theme.primaryText
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.isProminent ? (control.down ? Qt.darker(Theme.accent, 1.12) : Theme.accent)
            : control.hovered || control.down ? Theme.hoveredControl : Theme.control
        border.width: 1
        border.color: Theme.controlBorder

        FocusRing {
            visible: control.visualFocus
            radius: Theme.controlRadius + 3
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A small button with a symbol; what it does, its text says to a screen reader and its tip to the eye.
T.AbstractButton {
    id: control

    required property string symbol
    property color symbolColor: Theme.secondaryText

    implicitWidth: SettingsTheme.controlHeight
    implicitHeight: SettingsTheme.controlHeight
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.3

    Keys.onReturnPressed: event => event.isAutoRepeat || control.clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || control.clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: control.symbol
            size: 14
            color: control.symbolColor
        }
    }

    background: Rectangle {
        radius: SettingsTheme.controlRadius
        color: control.hovered || control.down ? Theme.hoveredButton : "transparent"

        FocusRing {
            visible: control.visualFocus
            radius: SettingsTheme.controlRadius + 2
        }
    }
}

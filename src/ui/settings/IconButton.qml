import QtQuick
import QtQuick.Templates as T
import Larkspool.Style

/// A small button with a symbol; what it does, its text says to a screen reader and its tip to the eye.
T.AbstractButton {
    id: control

    required property string symbol
    property color symbolColor: Theme.secondaryText

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.3

    Keys.onReturnPressed: control.click()
    Keys.onEnterPressed: control.click()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: control.symbol
            size: 14
            color: control.symbolColor
        }
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.hovered || control.down ? Theme.hoveredButton : "transparent"

        FocusRing {
            visible: control.visualFocus
            radius: Theme.controlRadius + 2
        }
    }
}

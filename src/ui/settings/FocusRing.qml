import QtQuick
import Larkspool.Settings

/// Around a control that the keyboard has reached.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    color: "transparent"
    border.width: 2
    border.color: SettingsTheme.focusRing
}

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A field for one line of text.
T.TextField {
    id: field

    implicitHeight: 30
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.primaryText
    selectionColor: SettingsTheme.accent
    selectedTextColor: SettingsTheme.accentText
    placeholderTextColor: Theme.tertiaryText
    font.pixelSize: SettingsTheme.formText
    selectByMouse: true

    Text {
        x: field.leftPadding
        width: field.width - 2 * field.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: field.length === 0 && field.preeditText === ""
        text: field.placeholderText
        color: field.placeholderTextColor
        font: field.font
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft

        Accessible.ignored: true
    }

    background: Rectangle {
        radius: SettingsTheme.controlRadius
        color: SettingsTheme.control
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? SettingsTheme.focusRing : SettingsTheme.controlBorder
    }
}

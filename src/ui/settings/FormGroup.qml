import QtQuick
import Larkspool.Settings
import Larkspool.Style

/// Rows of a form on one sheet, with a title above and an explanation below, where there are such.
Column {
    id: group

    property string title: ""
    property string help: ""
    default property alias rows: sheet.data

    width: parent ? parent.width : 0
    spacing: 6

    Text {
        visible: group.title !== ""
        width: group.width
        leftPadding: SettingsTheme.groupPadding
        rightPadding: SettingsTheme.groupPadding
        text: group.title
        color: Theme.secondaryText
        font.pixelSize: SettingsTheme.formText
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        width: group.width
        height: sheet.height
        radius: SettingsTheme.groupRadius
        color: SettingsTheme.group
        border.width: 1
        border.color: SettingsTheme.groupBorder

        Column {
            id: sheet

            x: SettingsTheme.groupPadding
            width: parent.width - 2 * SettingsTheme.groupPadding
        }
    }

    Text {
        visible: group.help !== ""
        width: group.width
        leftPadding: SettingsTheme.groupPadding
        rightPadding: SettingsTheme.groupPadding
        text: group.help
        color: Theme.secondaryText
        font.pixelSize: SettingsTheme.helpText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}

import QtQuick
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
        leftPadding: Theme.groupPadding
        text: group.title
        color: Theme.secondaryText
        font.pixelSize: Theme.formText
        font.weight: Font.DemiBold

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        width: group.width
        height: sheet.height
        radius: Theme.groupRadius
        color: Theme.group
        border.width: 1
        border.color: Theme.groupBorder

        Column {
            id: sheet

            x: Theme.groupPadding
            width: parent.width - 2 * Theme.groupPadding
        }
    }

    Text {
        visible: group.help !== ""
        width: group.width
        leftPadding: Theme.groupPadding
        rightPadding: Theme.groupPadding
        text: group.help
        color: Theme.secondaryText
        font.pixelSize: Theme.helpText
        wrapMode: Text.Wrap

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}

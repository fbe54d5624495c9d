import QtQuick
import Larkspool.Settings
import Larkspool.Style

/// The text of a control; the letter behind an "&" is its access key.
Text {
    required property string label

    text: label.replace(/&(.)/, AccessKeys.areShown ? "<u>$1</u>" : "$1")
    textFormat: Text.StyledText
    color: Theme.primaryText
    font.pixelSize: SettingsTheme.formText
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignLeft

    // The control has the name already.
    Accessible.ignored: true
}

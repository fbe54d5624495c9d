pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// Colours to choose one from: objects with a `value`, "#RRGGBB", and the `text` that names it. Keys: Left, Right.
Row {
    id: row

    required property var colors
    required property string value
    property int side: SettingsTheme.swatch
    readonly property bool hasChosen: colors.some(color => color.value === value)

    signal chosen(value: string)

    spacing: 6
    // The ring reaches beyond the circle.
    padding: 4

    Repeater {
        id: circles

        model: row.colors

        delegate: T.RadioButton {
            id: circle

            required property int index
            required property var modelData
            readonly property color paint: modelData.value
            readonly property bool isPale: 0.3 * paint.r + 0.6 * paint.g + 0.1 * paint.b > 0.6

            width: row.side
            height: row.side
            // One of them is a stop of the Tab key; the arrows lead to the others.
            focusPolicy: checked || index === 0 && !row.hasChosen ? Qt.StrongFocus : Qt.ClickFocus
            checked: modelData.value === row.value
            text: modelData.text

            onClicked: row.chosen(modelData.value)
            Keys.onLeftPressed: circle.choose(index + (Theme.isMirrored ? 1 : -1))
            Keys.onRightPressed: circle.choose(index + (Theme.isMirrored ? -1 : 1))

            function choose(other: int) {
                const next = circles.itemAt(other)
                if (!next)
                    return
                next.forceActiveFocus(Qt.TabFocusReason)
                row.chosen(row.colors[other].value)
            }

            indicator: Rectangle {
                anchors.fill: parent
                radius: width / 2
                color: circle.paint
                border.width: 1
                border.color: SettingsTheme.controlBorder

                Rectangle {
                    anchors.centerIn: parent
                    width: row.side + SettingsTheme.swatchRing - SettingsTheme.swatch
                    height: width
                    visible: circle.checked
                    radius: width / 2
                    color: "transparent"
                    border.width: SettingsTheme.swatchRingWidth
                    border.color: Theme.primaryText
                }

                FocusRing {
                    visible: circle.visualFocus && !circle.checked
                    radius: width / 2
                }

                Rectangle {
                    anchors.centerIn: parent
                    width: 6
                    height: 6
                    visible: circle.visualFocus
                    radius: 3
                    color: circle.isPale ? "#1c1c1e" : "white"
                }
            }
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A row of a form with one of several choices: objects with the `value` that is stored and the `text` that is shown.
Item {
    id: picker

    required property string label
    required property var choices
    required property var value

    signal chosen(value: var)

    width: parent ? parent.width : 0
    height: SettingsTheme.formRow

    FontMetrics {
        id: metrics

        font.pixelSize: SettingsTheme.formText
    }

    ControlText {
        anchors.left: parent.left
        anchors.right: box.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        label: picker.label
    }

    T.ComboBox {
        id: box

        readonly property real widestChoice: {
            const widths = picker.choices.map(choice => metrics.advanceWidth(choice.text))
            return Math.max(...widths)
        }

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(132, Math.ceil(widestChoice) + 34)
        height: SettingsTheme.controlHeight
        focusPolicy: Qt.StrongFocus
        model: picker.choices
        textRole: "text"
        currentIndex: picker.choices.findIndex(choice => choice.value === picker.value)

        Accessible.name: picker.label.replace("&", "")

        onActivated: index => picker.chosen(picker.choices[index].value)

        contentItem: ControlText {
            leftPadding: box.mirrored ? 24 : 10
            rightPadding: box.mirrored ? 10 : 24
            verticalAlignment: Text.AlignVCenter
            label: box.displayText
        }

        indicator: Symbol {
            x: box.mirrored ? 8 : box.width - width - 8
            y: (box.height - height) / 2
            name: "chevron.down"
            size: 11
            color: Theme.secondaryText
        }

        background: Rectangle {
            radius: SettingsTheme.controlRadius
            color: box.hovered || box.down ? SettingsTheme.hoveredControl : SettingsTheme.control
            border.width: 1
            border.color: SettingsTheme.controlBorder

            FocusRing {
                visible: box.visualFocus
                radius: SettingsTheme.controlRadius + 3
            }
        }

        delegate: T.ItemDelegate {
            id: entry

            required property int index
            required property var modelData

            width: box.width - 8
            height: SettingsTheme.controlHeight
            highlighted: box.highlightedIndex === entry.index
            text: entry.modelData.text

            contentItem: ControlText {
                leftPadding: 8
                rightPadding: 8
                verticalAlignment: Text.AlignVCenter
                label: entry.modelData.text
                color: entry.highlighted ? SettingsTheme.accentText : Theme.primaryText
            }

            background: Rectangle {
                radius: 4
                color: entry.highlighted ? SettingsTheme.accent : "transparent"
            }
        }

        popup: T.Popup {
            y: box.height + 3
            width: box.width
            height: contentItem.implicitHeight + 8
            padding: 4

            contentItem: ListView {
                clip: true
                implicitHeight: contentHeight
                // Its type is not among those that are known to QML.
                model: box.popup.visible ? box.delegateModel : null // qmllint disable type
                currentIndex: box.highlightedIndex
                interactive: false

                // It lies over the window, not in the page.
                LayoutMirroring.enabled: Theme.isMirrored
                LayoutMirroring.childrenInherit: true
            }

            background: Rectangle {
                radius: SettingsTheme.controlRadius + 2
                color: Theme.menu
                border.width: 1
                border.color: Theme.menuBorder
            }
        }
    }
}

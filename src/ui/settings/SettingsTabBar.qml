pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// The tabs of the settings. Keys: Left and Right on a tab, Ctrl+Tab and Ctrl+Page Down anywhere.
T.TabBar {
    id: bar

    /// Whether a key combination is recorded: then none of them means anything here.
    required property bool isRecording

    contentHeight: height
    focus: true
    focusPolicy: Qt.NoFocus

    function step(distance: int) {
        const next = Math.max(0, Math.min(count - 1, currentIndex + distance))
        // First: a tab that has the focus already would not learn that a key has brought it.
        itemAt(next).forceActiveFocus(Qt.TabFocusReason)
        setCurrentIndex(next)
    }

    contentItem: ListView {
        focus: true
        implicitWidth: contentWidth
        model: bar.contentModel
        currentIndex: bar.currentIndex
        orientation: ListView.Horizontal
        interactive: false
        leftMargin: Theme.isMirrored ? 0 : Math.round((width - contentWidth) / 2)
        rightMargin: Theme.isMirrored ? Math.round((width - contentWidth) / 2) : 0
        spacing: 4
    }

    background: Rectangle {
        color: SettingsTheme.toolbar

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }

    Shortcut {
        enabled: !bar.isRecording
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        onActivated: bar.step(bar.currentIndex === bar.count - 1 ? 1 - bar.count : 1)
    }

    Shortcut {
        enabled: !bar.isRecording
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        onActivated: bar.step(bar.currentIndex === 0 ? bar.count - 1 : -1)
    }

    Repeater {
        model: [
            {text: qsTr("&General"), symbol: "gear"},
            {text: qsTr("&Categories"), symbol: "tag.fill"},
            {text: qsTr("&Shortcuts"), symbol: "keyboard"},
            {text: qsTr("S&torage"), symbol: "internaldrive"},
            {text: qsTr("&About"), symbol: "info.circle"}
        ]

        delegate: T.TabButton {
            id: tab

            required property int index
            required property var modelData
            readonly property color ink: checked ? SettingsTheme.accent : Theme.secondaryText

            width: Math.max(76, Math.ceil(chosenText.advanceWidth) + 16)
            height: bar.height - 12
            focus: tab.index === bar.currentIndex
            // One of the tabs is a stop of the Tab key; the arrows lead to the others.
            focusPolicy: tab.checked ? Qt.StrongFocus : Qt.ClickFocus
            text: bar.isRecording ? modelData.text.replace("&", "") : modelData.text

            Accessible.name: text.replace("&", "")

            onClicked: bar.setCurrentIndex(tab.index)
            Keys.onLeftPressed: bar.step(Theme.isMirrored ? 1 : -1)
            Keys.onRightPressed: bar.step(Theme.isMirrored ? -1 : 1)

            // Tabs do not move when another one is chosen.
            TextMetrics {
                id: chosenText

                font.pixelSize: SettingsTheme.helpText
                font.weight: Font.DemiBold
                text: tab.text.replace("&", "")
            }

            contentItem: Item {
                Symbol {
                    y: 6
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: tab.modelData.symbol
                    size: 20
                    color: tab.ink
                }

                ControlText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: 4
                    label: tab.text
                    color: tab.checked ? Theme.primaryText : Theme.secondaryText
                    font.pixelSize: SettingsTheme.helpText
                    font.weight: tab.checked ? Font.DemiBold : Font.Normal
                }
            }

            background: Rectangle {
                radius: 8
                color: tab.checked ? SettingsTheme.chosenTab : tab.hovered ? Theme.hoveredButton : "transparent"
                border.width: tab.visualFocus ? 2 : 0
                border.color: SettingsTheme.focusRing
            }
        }
    }
}

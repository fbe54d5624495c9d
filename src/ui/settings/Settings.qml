pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.Settings
import Larkspool.Style

/// The content of the settings window: a bar of tabs, and the page of the one that is chosen.
FocusScope {
    id: settings

    required property SettingsView view
    property alias currentTab: bar.currentIndex

    focus: true

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    Accessible.role: Accessible.Pane
    //: The content of the window, to a screen reader.
    Accessible.name: qsTr("Larkspool Settings")

    Keys.onPressed: event => {
        if (event.key === Qt.Key_Alt)
            AccessKeys.areShown = true
        event.accepted = false
    }
    Keys.onReleased: event => {
        if (event.key === Qt.Key_Alt)
            AccessKeys.areShown = false
        event.accepted = false
    }

    Connections {
        target: settings.Window.window

        function onActiveChanged() {
            AccessKeys.areShown = false
            if (!settings.Window.active)
                settings.view.shortcutRecorder.stopRecording()
        }
    }

    Rectangle {
        anchors.fill: parent
        color: SettingsTheme.window
    }

    SettingsTabBar {
        id: bar

        isRecording: settings.view.shortcutRecorder.isRecording
        onCurrentIndexChanged: settings.view.shortcutRecorder.stopRecording()
        width: parent.width
        height: SettingsTheme.tabBarHeight
    }

    // Only the page that is shown is there.
    Repeater {
        model: bar.currentIndex === 0 ? 1 : 0

        delegate: GeneralTab {
            anchors.fill: settings
            anchors.topMargin: SettingsTheme.tabBarHeight
            view: settings.view
        }
    }

    Repeater {
        model: bar.currentIndex === 1 && settings.view.categoryManager ? 1 : 0

        delegate: CategoryManager {
            anchors.fill: settings
            anchors.topMargin: SettingsTheme.tabBarHeight
            manager: settings.view.categoryManager
        }
    }

    Repeater {
        model: bar.currentIndex === 2 ? 1 : 0

        delegate: ShortcutsTab {
            anchors.fill: settings
            anchors.topMargin: SettingsTheme.tabBarHeight
            view: settings.view
        }
    }

    Repeater {
        model: bar.currentIndex === 3 ? 1 : 0

        delegate: StorageTab {
            anchors.fill: settings
            anchors.topMargin: SettingsTheme.tabBarHeight
            view: settings.view
        }
    }

    Repeater {
        model: bar.currentIndex === 4 ? 1 : 0

        delegate: AboutTab {
            anchors.fill: settings
            anchors.topMargin: SettingsTheme.tabBarHeight
            view: settings.view
        }
    }
}

pragma Singleton

import QtQuick
import Larkspool.Style

/// The look of the settings in numbers, beyond what they have in common with the panel.
QtObject {
    readonly property color window: Theme.isDark ? "#1e1e22" : "#f2f2f4"
    readonly property color toolbar: Theme.isDark ? "#26262b" : "#e7e7ea"
    readonly property color chosenTab: Theme.isDark ? "#3a3a42" : "#ffffff"
    readonly property color group: Theme.isDark ? "#28282e" : "#ffffff"
    readonly property color groupBorder: Theme.isDark ? "#14ffffff" : "#14000000"
    readonly property color control: Theme.isDark ? "#3a3a42" : "#ececef"
    readonly property color hoveredControl: Theme.isDark ? "#45454e" : "#e2e2e6"
    readonly property color controlBorder: Theme.isDark ? "#1fffffff" : "#1f000000"
    readonly property color switchTrack: Theme.isDark ? "#56565f" : "#c4c4ca"
    readonly property color accent: "#ff8c00"
    /// Of what is written on the accent.
    readonly property color accentText: "#1c1c1e"
    /// Over the window while a sheet is open.
    readonly property color veil: Theme.isDark ? "#80000000" : "#4d000000"
    readonly property color focusRing: Theme.isDark ? "#ffa640" : "#d97600"
    readonly property int margin: 20
    readonly property int tabBarHeight: 62
    readonly property int groupRadius: 10
    readonly property int groupPadding: 14
    readonly property int formRow: 38
    readonly property int controlHeight: 26
    readonly property int controlRadius: 6
    readonly property int formText: 13
    readonly property int helpText: 11
    readonly property int swatch: 22
    readonly property int swatchRing: 30
    readonly property real swatchRingWidth: 2.5
    readonly property int paletteCircle: 24
}

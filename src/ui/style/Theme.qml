pragma Singleton

import QtQuick

/// The look in numbers. Dark and light follow the desktop's palette.
QtObject {
    id: theme

    readonly property SystemPalette palette: SystemPalette {}
    readonly property bool isDark: palette.window.hslLightness < 0.5

    readonly property color panel: isDark ? "#18181c" : "#f7f7f8"
    readonly property color panelBorder: isDark ? "#33ffffff" : "#22000000"
    readonly property color separator: isDark ? "#1fffffff" : "#1a000000"
    readonly property color primaryText: isDark ? "#f2f2f5" : "#1c1c1e"
    readonly property color secondaryText: isDark ? "#a0a0a8" : "#6c6c72"
    readonly property color tertiaryText: isDark ? "#70707a" : "#98989e"
    readonly property color selection: "#ff8c00"
    readonly property color link: isDark ? "#5b9dff" : "#2f6fe0"

    readonly property color card: isDark ? Qt.rgba(0.05, 0.05, 0.07, 1) : Qt.rgba(0.94, 0.94, 0.95, 1)
    readonly property color selectedCard: isDark ? Qt.rgba(0.1, 0.1, 0.12, 1) : Qt.rgba(1, 1, 1, 1)
    readonly property color cardBorder: Qt.rgba(0.5, 0.5, 0.5, 0.3)

    readonly property color field: isDark ? "#26262b" : "#ebebee"

    readonly property int panelRadius: 16
    readonly property int margin: 20
    readonly property int chipRadius: 12
    readonly property int listMargin: 14
    readonly property int cardRadius: 14
    readonly property int cardHeight: 130
    readonly property int sidebarWidth: 76

    readonly property FontMetrics fontMetrics: FontMetrics {}
    readonly property string interfaceFont: fontMetrics.font.family
    readonly property string monospaced: "monospace"

    /// The accent of a kind of entry, by its stored text.
    function typeColor(type: string): color {
        switch (type) {
        case "image":
            return "#eb8c33"
        case "url":
            return "#33b873"
        case "file":
            return "#808594"
        case "richText":
            return "#9a4dd8"
        }
        return "#3f78f3"
    }

    /// The fill of a category's chip that is not chosen.
    function dimmedCategoryColor(category: color): color {
        if (isDark)
            return Qt.rgba(0.12 * category.r + 0.12, 0.12 * category.g + 0.12, 0.12 * category.b + 0.14, 1)
        const pale = component => 1 - 0.12 * (1 - component)
        return Qt.rgba(pale(category.r), pale(category.g), pale(category.b), 1)
    }

    /// The pale or deep tint of an accent behind a card's icon.
    function sidebar(accent: color): color {
        if (isDark)
            return Qt.rgba(accent.r * 0.3, accent.g * 0.3, accent.b * 0.3, 1)
        const tint = component => 1 - (1 - component) * 0.15
        return Qt.rgba(tint(accent.r), tint(accent.g), tint(accent.b), 1)
    }
}

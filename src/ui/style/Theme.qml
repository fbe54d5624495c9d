pragma Singleton

import QtQuick

/// The look in numbers. Dark and light follow the desktop's palette.
QtObject {
    id: theme

    readonly property SystemPalette palette: SystemPalette {}
    /// The program says what the desktop wants.
    property bool isDark: palette.window.hslLightness < 0.5
    /// Whether the layout runs from right to left, which the language says.
    readonly property bool isMirrored: Application.layoutDirection === Qt.RightToLeft
    /// Whether things move; they change at once when not.
    property bool animated: true

    readonly property color panel: isDark ? "#18181c" : "#f7f7f8"
    readonly property color panelBorder: isDark ? "#33ffffff" : "#22000000"
    readonly property color separator: isDark ? "#1fffffff" : "#1a000000"
    readonly property color primaryText: isDark ? "#f2f2f5" : "#1c1c1e"
    readonly property color secondaryText: isDark ? "#a0a0a8" : "#6c6c72"
    readonly property color tertiaryText: isDark ? "#70707a" : "#98989e"
    readonly property color selection: "#ff8c00"
    readonly property color link: isDark ? "#5b9dff" : "#2f6fe0"

    readonly property color card: isDark ? Qt.rgba(0.05, 0.05, 0.07, 1) : Qt.rgba(0.94, 0.94, 0.95, 1)
    readonly property color hoveredCard: isDark ? Qt.rgba(0.08, 0.08, 0.1, 1) : Qt.rgba(0.97, 0.97, 0.98, 1)
    readonly property color selectedCard: isDark ? Qt.rgba(0.1, 0.1, 0.12, 1) : Qt.rgba(1, 1, 1, 1)
    readonly property color cardBorder: Qt.rgba(0.5, 0.5, 0.5, 0.3)

    readonly property color field: isDark ? "#26262b" : "#ebebee"

    readonly property color hoveredButton: isDark ? "#1fffffff" : "#12000000"
    readonly property color menu: isDark ? "#2a2a30" : "#ffffff"
    readonly property color menuBorder: isDark ? "#33ffffff" : "#26000000"
    readonly property int menuRadius: 9
    readonly property int menuShadowRadius: 16
    readonly property int menuShadowOffset: 4
    readonly property color destructive: isDark ? "#ff6961" : "#d70015"

    /// Milliseconds of a small move.
    readonly property int quick: animated ? 150 : 0
    readonly property int fieldHeight: 34
    readonly property int fieldRadius: 9
    /// The highlighted card grows into it.
    readonly property int listSide: 29
    readonly property int panelRadius: 16
    readonly property int margin: 20
    readonly property int chipRadius: 12
    readonly property int chipHeight: 24
    readonly property int chipSpacing: 8
    readonly property int longestChip: 220
    /// Over how much chips that have no room fade out.
    readonly property int chipFade: 28
    readonly property int listMargin: 18
    /// Between two cards that are not scaled; and what is added beside the highlighted one, and beyond its
    /// neighbours, which are larger.
    readonly property int listSpacing: 12
    readonly property int highlightSpacing: 14
    readonly property int neighbourSpacing: 4
    /// Of the highlighted card, and of what takes its place.
    readonly property int highlightSide: 10
    /// How far it reaches beyond its place, up and down.
    readonly property int highlightBeyond: 4
    readonly property int cardRadius: 14
    readonly property int cardHeight: 130
    readonly property int sidebarWidth: 76

    readonly property FontMetrics fontMetrics: FontMetrics {}
    readonly property string interfaceFont: fontMetrics.font.family
    readonly property string monospaced: "monospace"

    // Combine panel

    readonly property color combineAccent: "#ff8c00"
    readonly property color combineFill: isDark ? Qt.rgba(0.12, 0.12, 0.14, 1) : Qt.rgba(0.95, 0.95, 0.97, 1)
    readonly property color combineChip: isDark ? "#34343a" : "#e0e0e4"
    readonly property color combinePreview: isDark ? "#17171b" : "#e6e6ea"
    readonly property int combineWidth: 560
    readonly property int combineMargin: 14
    readonly property int combineRadius: 14
    readonly property real combineBorder: 2.5
    readonly property int combineGlowRadius: 12
    readonly property int combineGlowOffset: 4
    readonly property int combineChipRadius: 7
    readonly property int combineChipsHeight: 134
    readonly property int combinePreviewRadius: 8
    readonly property int combinePreviewHeight: 120
    readonly property int combinePreviewLine: 17

    // Card

    readonly property real cardBorderWidth: 1.5
    readonly property real selectedBorderWidth: 3
    readonly property real shadowOpacity: 0.3
    readonly property int shadowRadius: 6
    readonly property int shadowOffset: 2
    readonly property int selectedShadowRadius: 12
    readonly property int selectedShadowOffset: 3
    readonly property real selectedScale: 1.06
    readonly property real hoveredScale: 1.01

    readonly property int sidebarPadding: 10
    readonly property int sidebarSide: 4
    readonly property int sidebarSpacing: 5
    readonly property int badge: 32
    readonly property int badgeSymbol: 17
    readonly property real badgeOpacity: 0.85
    readonly property int labelText: 8
    readonly property int ageText: 9
    readonly property int sourceText: 7

    readonly property int cardPadding: 14
    readonly property int cardTop: 12
    readonly property int cardBottom: 8
    readonly property int previewText: 13
    readonly property int previewLine: 19
    readonly property int urlText: 12
    readonly property int urlLine: 18
    readonly property int nameText: 13
    readonly property int folderText: 10
    readonly property int detailText: 9
    readonly property int pictureSpacing: 12
    readonly property int pathSpacing: 3
    readonly property int thumbnail: 80
    readonly property int thumbnailRadius: 6
    readonly property int fileIcon: 40

    readonly property color pinMarker: "#ff9500"
    readonly property color deleteSymbol: Qt.alpha(isDark ? "#ff453a" : "#ff3b30", 0.7)
    readonly property color rowButton: Qt.rgba(0, 0, 0, 0.05)
    readonly property int pinMarkerSymbol: 11
    readonly property int rowButtonSize: 24
    readonly property int rowButtonRadius: 5
    readonly property int rowButtonSymbol: 12
    readonly property int rowButtonSpacing: 6
    readonly property real hiddenActionsScale: 0.8

    readonly property color toolTip: isDark ? "#3a3a40" : "#ffffff"
    readonly property int toolTipText: 11
    readonly property int toolTipRadius: 5
    /// Milliseconds.
    readonly property int toolTipDelay: 600

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

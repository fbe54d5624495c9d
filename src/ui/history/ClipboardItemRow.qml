pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// One entry of the history as a card. It draws what the history's model says of the entry; what the user does to
/// it is told.
Item {
    id: row

    required property int index
    required property string preview
    required property string title
    required property string folder
    required property string pixelSize
    required property string picture
    required property string typeName
    /// Transparent when the entry is assigned to no category.
    required property color categoryColor
    required property string icon
    required property string label
    required property string age
    required property string sourceApp
    required property bool isPinned
    property bool isSelected: false
    /// Whether a screen reader is to follow the keys to it.
    property bool isFocused: false
    /// One of several that the user has chosen.
    property bool isMultiSelected: false
    /// Something about the entry that the user is to know, said while it is selected.
    property string notice: ""
    property color selectionColor: Theme.selection
    /// Scales the card, besides what it does itself when it is selected or hovered.
    property real scaleFactor: 1

    readonly property bool isHovered: hover.hovered
    readonly property color accent: categoryColor.a > 0 ? categoryColor : Theme.typeColor(typeName)
    /// The scale that the card has or is moving to.
    readonly property real cardScale: {
        const own = isSelected ? Theme.selectedScale : isHovered ? Theme.hoveredScale : 1
        return scaleFactor * own
    }

    /// A click on the card is both, in this order. `modifiers` are Qt::KeyboardModifiers.
    signal select(int modifiers)
    signal paste
    signal pin
    signal remove

    function act(modifiers: int) {
        row.select(modifiers)
        row.paste()
    }

    component QuickMove: NumberAnimation {
        duration: Theme.quick
        easing.type: Easing.OutQuad
    }

    onIsFocusedChanged: ScreenReader.follow(row)
    // A row that is used again is another entry.
    onPreviewChanged: ScreenReader.follow(row)

    height: Theme.cardHeight
    z: isSelected ? 2 : isHovered ? 1 : 0

    Accessible.role: Accessible.ListItem
    Accessible.name: row.preview || row.label
    Accessible.description: row.label + ", " + row.age + (row.sourceApp && ", " + row.sourceApp)
                            + (row.notice && ". " + row.notice)
    Accessible.selected: row.isSelected
    Accessible.selectable: true
    Accessible.focused: row.isFocused
    Accessible.checkable: row.isMultiSelected
    Accessible.checked: row.isMultiSelected
    Accessible.onPressAction: row.act(Qt.NoModifier)

    Item {
        id: card

        anchors.fill: parent
        scale: row.cardScale

        // A row that shows another entry while it is not seen does not move.
        Behavior on scale {
            enabled: row.visible

            QuickMove {}
        }

        CardFace {
            anchors.fill: parent
            color: row.isSelected ? Theme.selectedCard : row.isHovered ? Theme.hoveredCard : Theme.card
            sidebarColor: Theme.sidebar(row.accent)
            sidebarWidth: Theme.sidebarWidth
            isMirrored: Theme.isMirrored
            radius: Theme.cardRadius
            borderColor: row.isSelected ? row.selectionColor : Theme.cardBorder
            borderWidth: row.isSelected ? Theme.selectedBorderWidth : Theme.cardBorderWidth
            shadowColor: Qt.alpha(row.isSelected ? row.selectionColor : "black", Theme.shadowOpacity)
            shadowRadius: row.isSelected ? Theme.selectedShadowRadius : Theme.shadowRadius
            shadowOffset: row.isSelected ? Theme.selectedShadowOffset : Theme.shadowOffset

            Behavior on color {
                enabled: row.visible

                ColorAnimation {
                    duration: Theme.quick
                    easing.type: Easing.OutQuad
                }
            }
        }

        HoverHandler {
            id: hover

            blocking: true
        }

        MouseArea {
            anchors.fill: parent
            onClicked: mouse => row.act(mouse.modifiers)
        }

        Item {
            // Letters with many marks reach far beyond their lines.
            anchors.fill: parent
            clip: true

            CardSidebar {
                anchors.left: parent.left
                height: parent.height
                icon: row.icon
                label: row.label
                age: row.age
                sourceApp: row.sourceApp
                accent: row.accent
                cardScale: row.cardScale
            }

            CardPreview {
                id: content

                anchors.left: parent.left
                anchors.leftMargin: Theme.sidebarWidth + Theme.cardPadding
                y: Theme.cardTop
                width: parent.width - Theme.sidebarWidth - 2 * Theme.cardPadding
                typeName: row.typeName
                preview: row.preview
                title: row.title
                folder: row.folder
                pixelSize: row.pixelSize
                picture: row.picture
                accent: row.accent
                cardScale: row.cardScale
            }

            RowActionsPlace {
                anchors.left: content.left
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Theme.cardBottom
                width: content.width
                isShown: row.isHovered || row.isSelected
                isAnimated: row.visible
                isPinned: row.isPinned
                notice: row.notice
                cardScale: row.cardScale
                onPin: row.pin()
                onRemove: row.remove()
            }
        }

        Repeater {
            model: row.isMultiSelected ? 1 : 0

            SelectionMark {
                anchors.right: card.right
                anchors.top: card.top
                markColor: row.selectionColor
                cardScale: row.cardScale
            }
        }
    }
}

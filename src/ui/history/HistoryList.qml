// Bound components are not created here by Qt 6.4, so that names are looked up as they ever were.
// qmllint disable unqualified
import QtQuick
import Larkspool.History
import Larkspool.Style

/// The entries as cards, the highlighted one always in sight.
ListView {
    id: list

    required property ClipboardHistoryView view

    readonly property int largestShift: 2 * (Theme.highlightSpacing + Theme.neighbourSpacing)

    /// Whether the highlight moves while the keyboard focus is in a search.
    property bool isHighlightMoved: false

    signal menuRequested(int row, real x, real y)

    leftMargin: Theme.listSide
    rightMargin: Theme.listSide
    topMargin: Theme.listMargin
    bottomMargin: Theme.listMargin + largestShift
    spacing: Theme.listSpacing
    clip: true
    focus: true
    keyNavigationEnabled: false
    model: list.view.filteredItems
    currentIndex: list.view.selectedIndex
    highlightFollowsCurrentItem: true
    highlightMoveDuration: Theme.quick
    highlightMoveVelocity: -1
    highlightRangeMode: ListView.ApplyRange
    preferredHighlightBegin: Theme.listMargin
    preferredHighlightEnd: height - Theme.listMargin - largestShift / 2
    // A row that is moved down may be in sight though its place is not.
    displayMarginBeginning: largestShift
    reuseItems: true
    boundsBehavior: Flickable.StopAtBounds

    Accessible.role: Accessible.List
    //: The list of the entries, to a screen reader.
    Accessible.name: qsTr("History")

    function showBeginning() {
        // positionViewAtBeginning would leave the margin out.
        contentY = originY - topMargin
    }

    /// A row is the larger the nearer it is to the highlighted one; the neighbours of that stand out a little.
    function scaleForIndex(index: int): real {
        const distance = Math.abs(index - list.view.selectedIndex)
        if (distance === 0)
            return 1
        if (distance === 1)
            return 1.03
        if (distance === 2)
            return 1.01
        return Math.max(0.96, 1 - 0.008 * distance)
    }

    /// How far a row lies below its place, for the highlighted card and its neighbours to have more room.
    function shiftForIndex(index: int): real {
        const highlighted = list.view.selectedIndex
        let shift = 0
        // Of the gaps below these rows, those above this one.
        for (let row = Math.max(0, highlighted - 2); row < Math.min(index, highlighted + 2); ++row) {
            const isBesideIt = row === highlighted - 1 || row === highlighted
            shift += isBesideIt ? Theme.highlightSpacing : Theme.neighbourSpacing
        }
        return shift
    }

    onActiveFocusChanged: {
        if (activeFocus)
            list.view.setFocus(ClipboardHistoryView.View)
        else
            list.view.endFocus(ClipboardHistoryView.View)
    }

    delegate: Item {
        id: place

        required property int index
        required property string preview
        required property string title
        required property string folder
        required property string pixelSize
        required property string picture
        required property string typeName
        required property color categoryColor
        required property string icon
        required property string label
        required property string age
        required property string sourceApp
        required property bool isPinned
        readonly property bool isEdited: place.index >= 0 && place.index === list.view.editingIndex
        readonly property bool isMultiSelected: list.view.selectedCount > 0 && list.view.isMultiSelected(place.index)

        width: list.width - list.leftMargin - list.rightMargin
        height: isEdited ? editor.height - 2 * Theme.highlightBeyond : row.height
        z: row.z
        transform: Translate {
            y: list.shiftForIndex(place.index)

            Behavior on y {
                enabled: place.visible

                NumberAnimation {
                    duration: Theme.quick
                    easing.type: Easing.OutQuad
                }
            }
        }

        // A row that waits to be used again is still among the list's children, and would be read out.
        ListView.onPooled: visible = false
        ListView.onReused: visible = true

        Connections {
            target: list.view
            enabled: place.isEdited

            function onFocusChanged() {
                if (list.view.focus === ClipboardHistoryView.Edit && editor.item)
                    (editor.item as ItemEditor).takeFocus()
            }
        }

        ClipboardItemRow {
            id: row

            width: parent.width
            visible: !place.isEdited
            index: place.index
            preview: place.preview
            title: place.title
            folder: place.folder
            pixelSize: place.pixelSize
            picture: place.picture
            typeName: place.typeName
            categoryColor: place.categoryColor
            icon: place.icon
            label: place.label
            age: place.age
            sourceApp: place.sourceApp
            isPinned: place.isPinned
            isSelected: place.index === list.view.selectedIndex
            isFocused: {
                const isFollowed = list.activeFocus || list.isHighlightMoved
                return isSelected && visible && isFollowed && list.view.combinePanel === null
            }
            isMultiSelected: place.isMultiSelected
            notice: isSelected ? list.view.editRefusal : ""
            scaleFactor: list.scaleForIndex(place.index)
            selectionColor: list.view.borderColor
            onSelect: modifiers => list.view.select(place.index, modifiers)
            onPaste: list.view.paste(place.index)
            onPin: list.view.togglePin(place.index)
            onRemove: list.view.deleteItem(place.index)
        }

        TapHandler {
            acceptedButtons: Qt.RightButton
            enabled: !place.isEdited
            onTapped: point => {
                const spot = place.mapToItem(list, point.position.x, point.position.y)
                list.menuRequested(place.index, spot.x, spot.y)
            }
        }

        Loader {
            id: editor

            x: Theme.highlightSide - Theme.listSide
            y: -Theme.highlightBeyond
            width: list.width - 2 * Theme.highlightSide
            active: place.isEdited
            // At once: a letter may come before the view gives it the focus.
            onLoaded: (item as ItemEditor).takeFocus()

            sourceComponent: ItemEditor {
                view: list.view
                symbol: "pencil.circle.fill"
                //: The title of the card on which an entry is changed.
                title: qsTr("Edit")
                focusName: ClipboardHistoryView.Edit
                text: list.view.editText
                onEdited: text => list.view.editText = text
                onCancelled: list.view.cancelEdit()
            }
        }
    }
}

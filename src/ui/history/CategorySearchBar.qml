pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// Finding a category by its name.
Row {
    id: bar

    required property ClipboardHistoryView view
    /// Whether the highlight has moved among the chips since something was typed: as in the list of a search.
    property bool isHighlightMoved: false

    height: Theme.fieldHeight
    spacing: 12

    onVisibleChanged: isHighlightMoved = false

    function takeFocus() {
        field.takeFocus()
    }

    SearchField {
        id: field

        width: 200
        view: bar.view
        symbol: "line.3.horizontal.decrease.circle.fill"
        //: In an empty field in which the name of a category is typed.
        placeholder: qsTr("Filter...")
        focusName: ClipboardHistoryView.CategorySearch
        text: bar.view.categorySearchText
        isAside: bar.isHighlightMoved
        onEdited: text => {
            bar.view.categorySearchText = text
            bar.isHighlightMoved = false
        }
    }

    ChipList {
        id: matching

        anchors.verticalCenter: parent.verticalCenter
        width: bar.width - field.width - bar.spacing
        model: bar.view.matchingCategories
        currentIndex: bar.view.categorySearchIndex
        highlightMoveDuration: Theme.quick
        onCurrentIndexChanged: bar.isHighlightMoved = bar.visible

        Accessible.role: Accessible.List
        Accessible.name: qsTr("Categories")

        delegate: CategoryChip {
            id: chip

            required property int index

            isChosen: index === bar.view.categorySearchIndex
            isFocused: isChosen && bar.isHighlightMoved
            onClicked: bar.view.chooseCategory(chip.index)
        }
    }
}

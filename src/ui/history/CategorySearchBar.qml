pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// Finding a category by its name.
Row {
    id: bar

    required property ClipboardHistoryView view

    height: Theme.fieldHeight
    spacing: 12

    function takeFocus() {
        field.takeFocus()
    }

    SearchField {
        id: field

        width: 200
        view: bar.view
        symbol: "line.3.horizontal.decrease.circle.fill"
        placeholder: qsTr("Filter...")
        focusName: ClipboardHistoryView.CategorySearch
        text: bar.view.categorySearchText
        onEdited: text => bar.view.categorySearchText = text
    }

    ChipList {
        id: matching

        anchors.verticalCenter: parent.verticalCenter
        width: bar.width - field.width - bar.spacing
        model: bar.view.matchingCategories
        currentIndex: bar.view.categorySearchIndex
        highlightMoveDuration: Theme.quick

        Accessible.role: Accessible.List
        Accessible.name: qsTr("Categories")

        delegate: CategoryChip {
            id: chip

            required property int index

            isChosen: index === bar.view.categorySearchIndex
            onClicked: bar.view.chooseCategory(chip.index)
        }
    }
}

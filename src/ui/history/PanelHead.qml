pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History

/// What stands over the list: the count and the menu, the search, the categories, the category search and, while
/// there is one, the selection.
Column {
    id: head

    required property ClipboardHistoryView view
    required property int count
    /// In a search the highlight moves while the keyboard focus stays in the field. A screen reader hears of it as
    /// if the focus had moved, until more is typed.
    property bool isHighlightMoved: false

    signal menuRequested(Item button)

    spacing: 12

    function focusSearch() {
        search.takeFocus()
    }

    function focusCategorySearch() {
        categorySearch.takeFocus()
    }

    Connections {
        target: head.view

        function onSelectedIndexChanged() {
            head.isHighlightMoved = head.view.focus === ClipboardHistoryView.Search
        }

        function onSearchTextChanged() {
            head.isHighlightMoved = false
        }

        function onFocusChanged() {
            head.isHighlightMoved = false
        }
    }

    HeaderBar {
        width: parent.width
        count: head.count
        onMenuRequested: button => head.menuRequested(button)
    }

    SearchField {
        id: search

        width: parent.width
        visible: head.view.isSearchExpanded
        view: head.view
        symbol: "magnifyingglass"
        //: In an empty field in which a search text is typed.
        placeholder: qsTr("Search...")
        focusName: ClipboardHistoryView.Search
        isAside: head.isHighlightMoved
        text: head.view.searchText
        onEdited: text => head.view.searchText = text
    }

    CategoryBar {
        width: parent.width
        view: head.view
    }

    CategorySearchBar {
        id: categorySearch

        width: parent.width
        visible: head.view.isCategorySearching
        view: head.view
    }

    SelectionBar {
        width: parent.width
        visible: head.view.selectedCount > 0
        count: head.view.selectedCount
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// A column of rows, for RowSheet.cpp to draw.
Rectangle {
    id: sheet

    required property HistoryListModel rows
    property int selectedIndex: 0
    /// Whether each row stands alone, or is scaled as beside a selected one.
    property bool isList: true
    property real side: 28

    function scaleOf(index: int): real {
        const distance = Math.abs(index - selectedIndex)
        return [1, 1.03, 1.01][distance] ?? Math.max(0.96, 1 - 0.008 * distance)
    }

    width: 680
    height: 640
    color: Theme.panel

    ListView {
        id: list

        anchors.fill: parent
        leftMargin: sheet.side
        rightMargin: sheet.side
        topMargin: Theme.listMargin + 4
        spacing: 14
        model: sheet.rows
        currentIndex: sheet.selectedIndex
        highlightMoveDuration: Theme.quick
        reuseItems: true

        delegate: ClipboardItemRow {
            id: row

            width: list.width - list.leftMargin - list.rightMargin
            isSelected: row.index === sheet.selectedIndex
            scaleFactor: sheet.isList ? sheet.scaleOf(row.index) : 1

            ListView.onPooled: visible = false
            ListView.onReused: visible = true
        }
    }
}

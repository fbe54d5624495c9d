pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History

/// What can be done to one entry.
PopupMenu {
    id: menu

    required property ClipboardHistoryView view

    //: The menu of one entry, to a screen reader.
    title: qsTr("Entry")

    function openFor(row: int, x: real, y: real) {
        const assigned = view.assignedCategory(row)
        const categories = view.categoryNames().map((name, index) => ({
            text: name,
            isChecked: index === assigned,
            act: () => view.assignCategory(row, index)
        }))
        entries = [
            {text: qsTr("Paste"), act: () => view.paste(row)},
            {text: view.isPinned(row) ? qsTr("Unpin") : qsTr("Pin"), act: () => view.togglePin(row)},
            {
                text: qsTr("Assign Category"),
                //: No category.
                entries: [{text: qsTr("None"), isChecked: false, act: () => view.assignCategory(row, -1)}]
                    .concat(categories)
            },
            {text: qsTr("Delete"), isDestructive: true, act: () => view.deleteItem(row)}
        ]
        openAt(x, y)
    }
}

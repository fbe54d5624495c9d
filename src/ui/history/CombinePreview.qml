pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// The text that will be pasted, to be read and selected from.
RoundedBox {
    id: box

    required property string text
    required property bool isShortened

    height: Math.min(view.contentHeight, Theme.combinePreviewHeight)
    radius: Theme.combinePreviewRadius
    color: Theme.combinePreview

    Flickable {
        id: view

        anchors.fill: parent
        contentHeight: lines.height + 20
        clip: contentHeight > height
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds

        function reveal(top: real, bottom: real) {
            contentY = Math.max(0, Math.min(contentY, top), bottom - height)
        }

        Column {
            id: lines

            x: 10
            y: 10
            width: view.width - 20
            spacing: 6

            TextEdit {
                id: edit

                width: parent.width
                text: box.text
                textFormat: TextEdit.PlainText
                readOnly: true
                selectByMouse: true
                color: Theme.primaryText
                selectionColor: Theme.combineAccent
                selectedTextColor: "white"
                font.pixelSize: 11
                wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere

                Accessible.role: Accessible.StaticText
                Accessible.name: edit.text
                Accessible.readOnly: true

                LineHeight {
                    document: edit.textDocument
                    pixels: Theme.combinePreviewLine
                }

                onTextChanged: view.contentY = 0
                // A selection that is drawn out of sight takes the view along.
                onCursorRectangleChanged: {
                    const bottom = edit.y + cursorRectangle.y + cursorRectangle.height
                    view.reveal(bottom - Theme.combinePreviewLine, bottom + 20)
                }
            }

            Text {
                width: parent.width
                visible: box.isShortened
                text: qsTr("Only the beginning. All of it will be pasted.")
                textFormat: Text.PlainText
                color: Theme.secondaryText
                font.pixelSize: 11
                font.italic: true
                wrapMode: Text.WordWrap

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }

    ScrollThumb {
        view: view
    }
}

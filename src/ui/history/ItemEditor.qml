pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// A card with a text editor, for a new entry and for one that is changed.
CardFace {
    id: card

    required property ClipboardHistoryView view
    required property string symbol
    required property string title
    /// What the view calls its focus.
    required property int focusName
    required property string text

    signal edited(string text)
    signal cancelled

    /// The editor grows with its text, within these bounds.
    readonly property int smallest: 80
    readonly property int largest: 120

    height: header.height + frame.height + 38
    radius: Theme.cardRadius
    color: Theme.selectedCard
    // It has no bar at its side: the bar is of the same colour.
    sidebarColor: Theme.selectedCard
    sidebarWidth: Theme.cardRadius
    borderWidth: Theme.selectedBorderWidth
    borderColor: card.view.borderColor
    shadowColor: Qt.alpha(card.view.borderColor, Theme.shadowOpacity)
    shadowRadius: Theme.selectedShadowRadius
    shadowOffset: Theme.selectedShadowOffset

    Accessible.role: Accessible.Grouping
    Accessible.name: card.title

    function takeFocus() {
        editor.forceActiveFocus()
        editor.cursorPosition = editor.length
    }

    Item {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 14
        height: 20

        Symbol {
            id: sign

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            name: card.symbol
            size: 16
            color: card.view.borderColor
        }

        Text {
            anchors.left: sign.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: card.title
            color: Theme.primaryText
            font.pixelSize: 12
            font.weight: Font.DemiBold
        }

        Text {
            id: hint

            anchors.right: cancel.left
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            //: Keys and what they do, in one line beside the title; there is not much room.
            text: qsTr("↩ Save  |  ⇧↩ New line  |  Esc Cancel")
            color: Theme.secondaryText
            font.pixelSize: 9
            font.weight: Font.Medium

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            id: cancel

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Cancel")
            color: Theme.secondaryText
            font.pixelSize: 12

            Accessible.role: Accessible.Button
            Accessible.name: text
            Accessible.onPressAction: card.cancelled()

            MouseArea {
                anchors.fill: parent
                anchors.margins: -6
                onClicked: card.cancelled()
            }
        }
    }

    Rectangle {
        id: frame

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.margins: 14
        anchors.topMargin: 10
        height: Math.max(card.smallest, Math.min(card.largest, editor.implicitHeight + 16))
        radius: 8
        color: Theme.field

        Flickable {
            id: page

            anchors.fill: parent
            anchors.margins: 8
            contentWidth: width
            contentHeight: editor.implicitHeight
            clip: true
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds

            /// Keeps the cursor in sight.
            function follow(cursor: rect) {
                if (cursor.y < contentY)
                    contentY = cursor.y
                else if (cursor.y + cursor.height > contentY + height)
                    contentY = cursor.y + cursor.height - height
            }

            TextEdit {
                id: editor

                width: page.width
                text: card.text
                textFormat: TextEdit.PlainText
                color: Theme.primaryText
                selectionColor: Theme.selection
                selectedTextColor: "white"
                font.family: Theme.monospaced
                font.pixelSize: 13
                wrapMode: TextEdit.Wrap
                selectByMouse: true

                Accessible.role: Accessible.EditableText
                Accessible.multiLine: true
                Accessible.name: card.title

                onTextChanged: {
                    if (text !== card.text)
                        card.edited(text)
                }
                onCursorRectangleChanged: page.follow(cursorRectangle)
                onActiveFocusChanged: {
                    if (activeFocus)
                        card.view.setFocus(card.focusName)
                    else
                        card.view.endFocus(card.focusName)
                }
            }
        }
    }
}

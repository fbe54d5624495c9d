pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// Several entries as one text: the templates, what comes of the highlighted one, and what to do with it.
Item {
    id: card

    required property string title
    /// A model with the role `name`.
    required property var templateNames
    /// -1 when none is.
    required property int highlightedIndex
    required property string preview
    /// Whether more will be pasted than the preview shows.
    property bool isPreviewShortened: false

    signal choose(int index)
    signal paste
    signal cancel

    width: Theme.combineWidth
    height: content.height + 2 * Theme.combineMargin

    Accessible.role: Accessible.Dialog
    Accessible.name: card.title

    component PlainButton: Text {
        id: button

        signal clicked

        textFormat: Text.PlainText
        font.pixelSize: 12

        Accessible.role: Accessible.Button
        Accessible.name: button.text
        Accessible.onPressAction: button.clicked()

        MouseArea {
            anchors.fill: parent
            anchors.margins: -8
            onClicked: button.clicked()
        }
    }

    CardFace {
        anchors.fill: parent
        color: Theme.combineFill
        // It has no bar at its side: the bar is of the same colour.
        sidebarColor: Theme.combineFill
        sidebarWidth: Theme.combineRadius
        radius: Theme.combineRadius
        borderColor: Theme.combineAccent
        borderWidth: Theme.combineBorder
        shadowColor: Qt.alpha(Theme.combineAccent, 0.3)
        shadowRadius: Theme.combineGlowRadius
        shadowOffset: Theme.combineGlowOffset
    }

    MouseArea {
        // What is below gets none of it.
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }

    Column {
        id: content

        x: Theme.combineMargin
        y: Theme.combineMargin
        width: parent.width - 2 * Theme.combineMargin
        spacing: 12

        Item {
            width: parent.width
            height: Math.ceil(title.height)

            Symbol {
                id: symbol

                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                name: "doc.on.doc.fill"
                size: 15
                color: Theme.combineAccent
            }

            Text {
                id: title

                anchors.left: symbol.right
                anchors.leftMargin: 8
                anchors.right: hint.left
                anchors.rightMargin: 12
                text: card.title
                textFormat: Text.PlainText
                color: Theme.combineAccent
                font.pixelSize: 13
                font.bold: true
                horizontalAlignment: Text.AlignLeft
                elide: Text.ElideRight
            }

            Text {
                id: hint

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                //: Keys and what they do, in one line beside the title; there is not much room.
                text: qsTr("← → templates  |  ↩ Paste  |  Esc Cancel")
                textFormat: Text.PlainText
                color: Theme.secondaryText
                font.pixelSize: 9
                font.weight: Font.Medium

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        TemplateChips {
            width: parent.width
            names: card.templateNames
            highlightedIndex: card.highlightedIndex
            onChoose: index => card.choose(index)
        }

        CombinePreview {
            width: parent.width
            text: card.preview
            isShortened: card.isPreviewShortened
        }

        Item {
            width: parent.width
            height: Math.ceil(cancelButton.height)

            PlainButton {
                id: cancelButton

                anchors.left: parent.left
                text: qsTr("Cancel")
                color: Theme.secondaryText
                onClicked: card.cancel()
            }

            PlainButton {
                anchors.right: parent.right
                //: On a button; the arrow is the sign on the key that does the same.
                text: qsTr("Paste ↩")
                color: Theme.combineAccent
                font.weight: Font.DemiBold
                onClicked: card.paste()
            }
        }
    }
}

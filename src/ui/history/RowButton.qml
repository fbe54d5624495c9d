import QtQuick
import Larkspool.History
import Larkspool.Style

/// A small button on a card. What it does, its tooltip says, to a screen reader as well.
RoundedBox {
    id: button

    required property string symbol
    required property color symbolColor
    required property string toolTip
    required property real cardScale

    signal clicked

    width: Theme.rowButtonSize
    height: Theme.rowButtonSize
    radius: Theme.rowButtonRadius
    color: area.containsMouse ? Theme.hoveredButton : Theme.rowButton

    Accessible.role: Accessible.Button
    Accessible.name: button.toolTip
    Accessible.onPressAction: button.clicked()

    CardSymbol {
        anchors.centerIn: parent
        name: button.symbol
        side: Theme.rowButtonSymbol
        cardScale: button.cardScale
        color: button.symbolColor
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }

    RoundedBox {
        id: tip

        readonly property real centred: (button.width - width) / 2
        /// As far as the card reaches: the last button is near its edge.
        readonly property real leftmost: 2 - Theme.cardPadding - button.x
        readonly property real rightmost: (button.parent?.width ?? 0) - button.x + Theme.cardPadding - 2 - width

        anchors.bottom: parent.top
        anchors.bottomMargin: 4
        x: Theme.isMirrored ? Math.max(centred, leftmost) : Math.min(centred, rightmost)
        width: Math.ceil(tipText.implicitWidth) + 12
        height: Math.ceil(tipText.implicitHeight) + 6
        visible: tip.opacity > 0
        opacity: 0
        radius: Theme.toolTipRadius
        color: Theme.toolTip

        Text {
            id: tipText

            anchors.centerIn: parent
            text: button.toolTip
            textFormat: Text.PlainText
            color: Theme.primaryText
            font.pixelSize: Theme.toolTipText

            // The button has the name already.
            Accessible.ignored: true
        }

        states: State {
            name: "shown"
            when: area.containsMouse && !area.pressed

            PropertyChanges {
                tip.opacity: 1
            }
        }
        transitions: Transition {
            to: "shown"

            SequentialAnimation {
                PauseAnimation {
                    duration: Theme.toolTipDelay
                }
                NumberAnimation {
                    property: "opacity"
                    duration: Theme.quick
                }
            }
        }
    }
}

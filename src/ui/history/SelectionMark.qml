import QtQuick
import Larkspool.History
import Larkspool.Style

/// The mark of a card that is one of several chosen ones: on its corner, where no text is.
RoundedBox {
    id: mark

    required property color markColor
    required property real cardScale

    anchors.rightMargin: -6
    anchors.topMargin: -6
    width: 22
    height: 22
    radius: 11
    color: Theme.panel

    RoundedBox {
        // The tick is a hole in the symbol.
        anchors.centerIn: parent
        width: 10
        height: 10
        radius: 5
        color: "white"
    }

    CardSymbol {
        anchors.centerIn: parent
        name: "checkmark.circle.fill"
        side: 20
        cardScale: mark.cardScale
        color: mark.markColor
    }
}

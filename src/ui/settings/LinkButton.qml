import QtQuick
import Larkspool.Style

/// Opens a page in the user's browser. No button of the toolkit's: a screen reader is to hear a link.
Item {
    id: link

    /// With an "&" before the letter of the access key.
    required property string label

    signal clicked

    implicitWidth: caption.implicitWidth + 4
    implicitHeight: caption.implicitHeight
    activeFocusOnTab: true

    Accessible.role: Accessible.Link
    Accessible.name: label.replace("&", "")
    Accessible.focusable: true
    Accessible.onPressAction: link.clicked()

    Keys.onReturnPressed: event => event.isAutoRepeat || link.clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || link.clicked()
    Keys.onSpacePressed: event => event.isAutoRepeat || link.clicked()

    Shortcut {
        autoRepeat: false
        sequence: "Alt+" + link.label.charAt(link.label.indexOf("&") + 1)
        onActivated: link.clicked()
    }

    ControlText {
        id: caption

        anchors.centerIn: parent
        label: link.label
        color: Theme.link
        font.underline: hover.hovered
    }

    FocusRing {
        visible: link.activeFocus
        radius: 5
    }

    HoverHandler {
        id: hover

        cursorShape: Qt.PointingHandCursor
    }

    TapHandler {
        onTapped: link.clicked()
    }
}

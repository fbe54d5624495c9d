import QtQuick
import QtQuick.Templates as T
import Larkspool.Style

/// Opens a page in the user's browser.
T.AbstractButton {
    id: link

    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight + 4
    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.Link
    Accessible.name: text.replace("&", "")

    Keys.onReturnPressed: link.click()
    Keys.onEnterPressed: link.click()

    contentItem: ControlText {
        label: link.text
        color: Theme.link
        font.underline: link.hovered
    }

    background: Item {
        FocusRing {
            visible: link.visualFocus
            radius: 5
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}

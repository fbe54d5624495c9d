import QtQuick
import Larkspool.Style

/// Chips in one line. Where there are more of them than room, they fade out.
ListView {
    id: chips

    component Fade: Rectangle {
        id: fade

        required property color from
        required property color to

        width: Theme.chipFade
        height: Theme.chipHeight
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: fade.from
            }
            GradientStop {
                position: 1
                color: fade.to
            }
        }
    }

    height: Theme.chipHeight
    orientation: ListView.Horizontal
    spacing: Theme.chipSpacing
    clip: true
    interactive: contentWidth > width
    boundsBehavior: Flickable.StopAtBounds

    Fade {
        parent: chips
        visible: !chips.atXBeginning
        from: Theme.panel
        to: Qt.alpha(Theme.panel, 0)
    }

    Fade {
        parent: chips
        x: chips.width - width
        visible: !chips.atXEnd
        from: Qt.alpha(Theme.panel, 0)
        to: Theme.panel
    }
}

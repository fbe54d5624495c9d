// Bound components are not created here by Qt 6.4, so that names are looked up as they ever were.
// qmllint disable unqualified
import QtQuick
import Larkspool.History

/// The combine panel, while there is one; what lies below is out of reach then.
Item {
    id: overlay

    /// May be null.
    required property CombinePanel panel

    signal closed

    MouseArea {
        anchors.fill: parent
        visible: overlay.panel !== null
        hoverEnabled: true
        onClicked: overlay.panel.cancel()
    }

    Loader {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 164 // its height changes with the template
        active: overlay.panel !== null
        onActiveChanged: {
            if (!active)
                overlay.closed()
        }

        sourceComponent: CombinePanelView {
            panel: overlay.panel
        }
    }
}

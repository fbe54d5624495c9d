import QtQuick
import QtQuick.Templates as T
import Larkspool.Style

/// A row of a form that is on or off; a click anywhere on it turns it.
T.Switch {
    id: control

    width: parent ? parent.width : 0
    height: Math.max(Theme.formRow, label.implicitHeight + 14)
    focusPolicy: Qt.StrongFocus

    Accessible.name: text.replace("&", "")

    contentItem: ControlText {
        id: label

        rightPadding: control.indicator.width + 12
        verticalAlignment: Text.AlignVCenter
        label: control.text
        elide: Text.ElideNone
        wrapMode: Text.Wrap
    }

    indicator: Rectangle {
        x: control.mirrored ? 0 : control.width - width
        y: (control.height - height) / 2
        width: 36
        height: 20
        radius: 10
        color: control.checked ? Theme.accent : Theme.switchTrack

        Rectangle {
            x: control.checked ? parent.width - width - 2 : 2
            y: 2
            width: 16
            height: 16
            radius: 8
            color: "white"

            Behavior on x {
                enabled: Theme.animated

                NumberAnimation {
                    duration: Theme.quick
                    easing.type: Easing.OutQuad
                }
            }
        }

        FocusRing {
            visible: control.visualFocus
            radius: 13
        }
    }
}

import QtQuick
import QtQuick.Templates as T
import Larkspool.Settings
import Larkspool.Style

/// A row of a form that is on or off; a click anywhere on it turns it.
T.Switch {
    id: control

    /// With an "&" before the letter of the access key.
    required property string label

    width: parent ? parent.width : 0
    height: Math.max(SettingsTheme.formRow, implicitContentHeight + 14)
    focusPolicy: Qt.StrongFocus
    text: label.replace("&", "")

    Shortcut {
        autoRepeat: false
        sequence: "Alt+" + control.label.charAt(control.label.indexOf("&") + 1)
        onActivated: {
            control.forceActiveFocus(Qt.ShortcutFocusReason)
            control.toggle()
            control.toggled()
        }
    }

    contentItem: ControlText {
        leftPadding: control.mirrored ? control.indicator.width + 12 : 0
        rightPadding: control.mirrored ? 0 : control.indicator.width + 12
        verticalAlignment: Text.AlignVCenter
        label: control.label
        elide: Text.ElideNone
        wrapMode: Text.Wrap
    }

    indicator: Rectangle {
        x: control.mirrored ? 0 : control.width - width
        y: (control.height - height) / 2
        width: 36
        height: 20
        radius: 10
        color: control.checked ? SettingsTheme.accent : SettingsTheme.switchTrack

        Rectangle {
            x: control.checked === control.mirrored ? 2 : parent.width - width - 2
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

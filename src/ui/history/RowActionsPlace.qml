pragma ComponentBehavior: Bound

import QtQuick
import Larkspool.History
import Larkspool.Style

/// Where the actions of a card come and go.
Item {
    id: place

    required property bool isShown
    /// Whether they come and go gradually.
    required property bool isAnimated
    required property bool isPinned
    required property string notice
    required property real cardScale

    signal pin
    signal remove

    component QuickMove: NumberAnimation {
        duration: Theme.quick
        easing.type: Easing.OutQuad
    }

    height: Theme.rowButtonSize
    opacity: isShown ? 1 : 0
    scale: isShown ? 1 : Theme.hiddenActionsScale

    Behavior on opacity {
        enabled: place.isAnimated

        QuickMove {}
    }
    Behavior on scale {
        enabled: place.isAnimated

        QuickMove {}
    }

    Repeater {
        model: place.isShown || place.opacity > 0 ? 1 : 0

        RowActions {
            width: place.width
            isPinned: place.isPinned
            notice: place.notice
            cardScale: place.cardScale
            onPin: place.pin()
            onRemove: place.remove()
        }
    }
}

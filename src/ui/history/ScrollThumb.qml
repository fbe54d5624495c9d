import QtQuick
import Larkspool.Style

/// Shows at the side where lines end of a view that has more content than room which part of it is in sight.
Rectangle {
    required property Flickable view

    parent: view
    anchors.right: parent?.right
    anchors.rightMargin: 2
    y: 4 + view.visibleArea.yPosition * (view.height - 8)
    width: 3
    height: Math.max(12, view.visibleArea.heightRatio * (view.height - 8))
    visible: view.contentHeight > view.height
    radius: width / 2
    color: Theme.tertiaryText
}

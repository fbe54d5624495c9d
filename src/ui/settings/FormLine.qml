import QtQuick
import Larkspool.Style

/// Between two rows of a form.
Rectangle {
    width: parent ? parent.width : 0
    height: 1
    color: Theme.separator
}

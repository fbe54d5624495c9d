import QtQuick

/// A named symbol, white, sharp at every scale.
Image {
    required property string name
    property int size: 16

    width: size
    height: size
    source: name === "" ? "" : Qt.resolvedUrl("symbols/" + name + ".svg")
    sourceSize.width: size
    sourceSize.height: size
    fillMode: Image.PreserveAspectFit
}

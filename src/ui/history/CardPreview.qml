pragma ComponentBehavior: Bound

import QtQuick

/// What a card shows of an entry's content, by the kind of the entry.
Item {
    id: content

    required property string typeName
    required property string preview
    required property string title
    required property string folder
    required property string pixelSize
    required property string picture
    required property color accent
    required property real cardScale

    // Repeaters of one or none: loaders cannot make what refers to its surroundings (Qt before 6.5).

    Repeater {
        model: content.typeName === "image" || content.typeName === "file" ? 0 : 1

        TextPreview {
            width: content.width
            text: content.preview
            isUrl: content.typeName === "url"
        }
    }

    Repeater {
        model: content.typeName === "file" ? 1 : 0

        FilePreview {
            width: content.width
            title: content.title
            folder: content.folder
            picture: content.picture
            accent: content.accent
            cardScale: content.cardScale
        }
    }

    Repeater {
        model: content.typeName === "image" ? 1 : 0

        ImagePreview {
            width: content.width
            title: content.title
            folder: content.folder
            detail: content.pixelSize
            picture: content.picture
        }
    }
}

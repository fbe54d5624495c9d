pragma Singleton

import QtQuick

/// Whether controls underline the letter that reaches them with Alt.
QtObject {
    property bool areShown: false
}

// SPDX-License-Identifier: MIT
import QtQuick

// A framed field with a magnifying glass, and a cross that empties it.
TextField {
    id: control

    property string clearName: ""

    framed: true
    symbol: "magnifyingglass"
    rightPadding: Theme.mirrored ? 40 : 44
    leftPadding: Theme.mirrored ? 44 : 40
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.searchEdit: true

    function empty() {
        clear()
        edited("")
    }

    Keys.onEscapePressed: event => {
        event.accepted = length > 0
        if (length > 0)
            empty()
    }

    IconButton {
        visible: control.length > 0
        x: Theme.mirrored ? 0 : control.width - width
        y: (control.height - height) / 2
        symbol: "xmark.circle.fill"
        symbolSize: 20
        tone: "grey"
        text: control.clearName
        takesFocus: false
        onClicked: control.empty()
    }
}

// SPDX-License-Identifier: MIT
import QtQuick

// One side of a stepper. A press that lasts repeats. The stepper itself has the focus and the voice.
Pressable {
    id: half

    required property string symbol
    required property bool dimmed

    takesFocus: false
    longest: 0.5
    onHeld: {
        clicked()
        repeats.start()
    }
    onDownChanged: if (!down)
        repeats.stop()
    opacity: dimmed ? 0.35 : 1
    Accessible.ignored: true

    PressTint {
        y: (parent.height - height) / 2
        x: 2
        width: parent.width - 4
        height: 32
        radius: 8
        over: half
    }
    Symbol {
        anchors.centerIn: parent
        name: half.symbol
        size: 20
    }
    Timer {
        id: repeats

        repeat: true
        interval: 120
        onTriggered: half.clicked()
    }
}

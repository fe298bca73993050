// SPDX-License-Identifier: MIT
import QtQuick

// One side of a stepper. A press that lasts repeats. The stepper itself has the focus and the voice.
Pressable {
    id: half

    required property string symbol
    required property bool dimmed

    takesFocus: false
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
        property int ticks: 0

        running: half.down
        repeat: true
        interval: ticks === 0 ? 500 : 120
        onRunningChanged: ticks = 0
        onTriggered: {
            ++ticks
            half.clicked()
        }
    }
}

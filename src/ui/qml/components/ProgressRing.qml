// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// How far something has come, as a ring with a text in its middle.
Item {
    id: ring

    required property real value
    required property string text
    property string suffix: ""
    property string tone: "blue"
    property string trackTone: tone
    property real diameter: 60
    property real lineWidth: 6

    implicitWidth: diameter
    implicitHeight: diameter
    Accessible.role: Accessible.ProgressBar
    Accessible.name: text + suffix

    ProgressArc {
        anchors.fill: parent
        value: ring.value
        lineWidth: ring.lineWidth
        color: Theme.symbol(ring.tone)
        trackColor: Qt.alpha(Theme.fill(ring.trackTone), 0.2)

        Behavior on value {
            NumberAnimation { duration: Theme.calm * 2; easing.type: Easing.OutCubic }
        }
    }
    Row {
        anchors.centerIn: parent
        LayoutMirroring.enabled: false

        Label {
            id: number

            text: ring.text
            wrapMode: Text.NoWrap
            size: ring.diameter * (text.length > 3 ? 0.21 : 0.25)
            font.weight: Font.Bold
            Accessible.ignored: true
        }
        Label {
            anchors.baseline: number.baseline
            visible: text !== ""
            text: ring.suffix
            color: Theme.secondary
            size: ring.diameter * 0.16
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    }
}

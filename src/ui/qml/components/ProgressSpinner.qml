// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// Something is under way. It turns, or breathes for a person who asked for less motion.
Item {
    id: spinner

    property string text: ""
    property real diameter: 24

    implicitWidth: diameter
    implicitHeight: diameter
    Accessible.role: Accessible.Animation
    Accessible.name: text
    Accessible.ignored: text === ""

    ProgressArc {
        id: arc

        anchors.fill: parent
        value: 0.28
        lineWidth: Math.max(2, spinner.diameter / 9)
        color: Theme.accent
        trackColor: Theme.tint("blue")

        RotationAnimation on rotation {
            running: spinner.visible && !Appearance.reducedMotion
            from: 0
            to: 360
            duration: 900
            loops: Animation.Infinite
        }
        SequentialAnimation on opacity {
            running: spinner.visible && Appearance.reducedMotion
            loops: Animation.Infinite

            NumberAnimation { to: 0.35; duration: 1200 }
            NumberAnimation { to: 1; duration: 1200 }
        }
    }
}

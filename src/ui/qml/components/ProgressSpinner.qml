// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// Something is under way. It turns, or breathes for a person who asked for less motion.
Item {
    id: spinner

    property real diameter: 24

    implicitWidth: diameter
    implicitHeight: diameter

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
            duration: Theme.round
            loops: Animation.Infinite
        }
        SequentialAnimation on opacity {
            running: spinner.visible && Appearance.reducedMotion
            loops: Animation.Infinite

            NumberAnimation { to: 0.35; duration: Theme.breath }
            NumberAnimation { to: 1; duration: Theme.breath }
        }
    }
}

// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// A slim bar that appears while something scrolls or is pointed at.
T.ScrollBar {
    id: bar

    implicitWidth: 10
    padding: 3
    minimumSize: 0.08
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 4
        radius: width / 2
        color: Theme.outline
        opacity: bar.pressed ? 0.9 : bar.active || bar.hovered ? 0.6 : 0

        Behavior on opacity {
            NumberAnimation { duration: Theme.calm }
        }
    }
}

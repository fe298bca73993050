// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// The window of a start that failed, for those who do not see what is printed.
Window {
    id: window

    required property string heading
    required property string reason
    required property string closing

    width: 420
    height: 420
    minimumWidth: 300
    minimumHeight: 400
    title: "Pillora"
    color: Theme.background

    Shortcut {
        sequences: ["Escape", "Return", "Enter"]
        onActivated: window.close()
    }
    CentredPage {
        anchors.fill: parent

        EmptyState {
            anchors.centerIn: parent
            width: Math.min(parent.width - 48, 340)
            symbol: "exclamationmark.triangle.fill"
            tone: "red"
            title: window.heading
            text: window.reason
            action: window.closing
            onTriggered: window.close()
        }
    }
}

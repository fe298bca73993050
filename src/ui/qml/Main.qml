// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// The window. The root view is the whole of it.
Window {
    id: window

    required property AppModel app

    width: 420
    height: 760
    minimumWidth: 300
    minimumHeight: 400
    title: "Pillora"
    color: Theme.background

    ContentView {
        anchors.fill: parent
        app: window.app
    }
}

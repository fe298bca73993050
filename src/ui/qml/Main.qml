// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// The window. The root view is the whole of it, and is made behind the window's back while that opens.
Window {
    id: window

    required property AppModel app

    width: 420
    height: 760
    minimumWidth: 300
    minimumHeight: 400
    title: "Pillora"
    color: Theme.background

    // In the turn after the one that shows it. The qmllint of Qt 6.4 takes callLater for no function.
    property bool isUp: false
    function comeUp() {
        isUp = true
    }
    onVisibleChanged: Qt.callLater(comeUp)  // qmllint disable type

    LateView {
        anchors.fill: parent
        focus: true
        file: "ContentView.qml"
        properties: ({ app: window.app })
        wanted: window.isUp
    }
}

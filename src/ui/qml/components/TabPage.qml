// SPDX-License-Identifier: MIT
import QtQuick

// The frame of a tab: its title, large, with the toolbar, and below them what the tab shows.
FocusScope {
    id: screen

    property string title: ""
    property var toolbar: null
    default property alias body: place.data
    signal triggered(string id)

    NavigationBar {
        id: head

        width: Math.min(parent.width, Theme.readableWidth + 2 * Theme.padding)
        anchors.horizontalCenter: parent.horizontalCenter
        title: screen.title
        large: true
        toolbar: screen.toolbar
        onTriggered: id => screen.triggered(id)
    }
    FocusScope {
        id: place

        focus: true
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
    }
}

// SPDX-License-Identifier: MIT
import QtQuick

// A page that slides up over the others: from the lower edge of a phone, as a card on a desktop.
Modal {
    id: sheet

    property string title: ""
    property var toolbar: null
    default property alias page: body.data
    signal triggered(string id)

    readonly property bool floating: roomWide >= 640
    property real away: 0  // how far it has slid out, 1 for wholly

    name: title
    asksOutside: floating
    width: floating ? Math.min(540, roomWide - 96) : roomWide
    height: floating ? Math.min(720, roomHigh - 64) : roomHigh - 28
    x: (roomWide - width) / 2
    y: (floating ? (roomHigh - height) / 2 : roomHigh - height) + away * height

    enter: Transition {
        NumberAnimation { property: "away"; from: 1; to: 0; duration: Theme.calm; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "away"; from: 0; to: 1; duration: Theme.calm; easing.type: Easing.InCubic }
    }

    background: Rectangle {
        radius: Theme.radiusSheet
        color: Theme.background
        border.width: Theme.dark ? Theme.hairline : 0
        border.color: Theme.separator

        Shadow {
            z: -1
            radius: parent.radius
        }
        Rectangle {
            visible: !sheet.floating
            y: Theme.radiusSheet
            width: parent.width
            height: parent.height - y
            color: Theme.background
        }
    }

    content: [
        NavigationBar {
            id: bar

            width: parent.width
            title: sheet.title
            toolbar: sheet.toolbar
            onTriggered: id => sheet.triggered(id)
        },
        Item {
            id: body

            anchors.top: bar.bottom
            anchors.bottom: parent.bottom
            width: parent.width
        }
    ]
}

// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

// A screen's frame: tabs below a narrow window and beside a wide one, as the root will have them.
Rectangle {
    id: page

    property string title: ""
    property int tab: 0
    property var toolbar: Sample.rows([{ id: "addMedicine", slot: "primary", title: "Add Medicine", symbol: "plus.circle.fill", isEnabled: true, isSemibold: false, menu: [] }])
    default property alias content: area.content
    readonly property bool wide: width >= 640
    readonly property var tabs: Sample.rows([{ tag: 0, title: "Today", symbol: "sun.max" }, { tag: 1, title: "Upcoming", symbol: "calendar.badge.clock" },
        { tag: 2, title: "Medicines", symbol: "pills" }, { tag: 3, title: "History", symbol: "clock.arrow.circlepath" }, { tag: 4, title: "Settings", symbol: "gear" }])

    color: Theme.background
    LayoutMirroring.enabled: Theme.mirrored
    LayoutMirroring.childrenInherit: true

    SideRail {
        id: rail

        visible: page.wide
        anchors.left: parent.left
        height: parent.height
        tabs: page.tabs
        selected: page.tab
    }
    Item {
        anchors.left: page.wide ? rail.right : parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: page.wide ? parent.bottom : bar.top

        NavigationBar {
            id: head

            width: Math.min(parent.width, Theme.readableWidth + 32)
            anchors.horizontalCenter: parent.horizontalCenter
            title: page.title
            large: true
            toolbar: page.toolbar
        }
        ScrollArea {
            id: area

            anchors.top: head.bottom
            anchors.bottom: parent.bottom
            width: parent.width
        }
    }
    TabBar {
        id: bar

        visible: !page.wide
        anchors.bottom: parent.bottom
        width: parent.width
        tabs: page.tabs
        selected: page.tab
    }
}

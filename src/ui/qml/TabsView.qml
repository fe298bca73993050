// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// The five tabs: at the foot of a narrow window, beside a wide one. A tab's screen is loaded when it is first shown and
// then stays, with what is open and how far it is scrolled.
FocusScope {
    id: view

    required property AppModel app
    readonly property var root: app.root.content
    readonly property bool wide: width >= 640

    component Tab: FocusScope {
        id: tab

        required property int tag
        readonly property bool isFront: view.root.selectedTab === tag
        property bool wasFront: isFront
        default property alias screen: contents.delegate

        anchors.fill: parent
        visible: isFront
        enabled: isFront
        focus: isFront
        onIsFrontChanged: if (isFront)
            wasFront = true

        Optional {
            id: contents

            when: tab.wasFront
        }
    }

    SideRail {
        id: rail

        visible: view.wide
        anchors.left: parent.left
        height: parent.height
        tabs: view.root.tabs
        selected: view.root.selectedTab
        onPicked: tag => view.app.root.select(tag)
    }
    FocusScope {
        id: place

        focus: true
        anchors.left: view.wide ? rail.right : parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: view.wide ? parent.bottom : bar.top

        Tab {
            tag: 0

            TodayView {
                anchors.fill: parent
                focus: true
                app: view.app
                model: view.app.today
            }
        }
        Tab {
            tag: 1

            UpcomingView {
                anchors.fill: parent
                focus: true
                model: view.app.upcoming
            }
        }
        Tab {
            tag: 2

            MedicineListView {
                anchors.fill: parent
                focus: true
                app: view.app
                model: view.app.medicines
            }
        }
        Tab {
            tag: 3

            ReminderHistoryView {
                anchors.fill: parent
                focus: true
                model: view.app.history
            }
        }
        Tab {
            tag: 4

            SettingsView {
                anchors.fill: parent
                focus: true
                model: view.app.settings
            }
        }
    }
    TabBar {
        id: bar

        visible: !view.wide
        anchors.bottom: parent.bottom
        width: parent.width
        tabs: view.root.tabs
        selected: view.root.selectedTab
        onPicked: tag => view.app.root.select(tag)
    }
    AddMedicineView {
        model: view.app.addMedicine
    }

    Repeater {
        model: view.root.tabs

        Item {
            id: shortcut

            required property int tag
            required property int index

            Shortcut {
                sequence: "Ctrl+" + (shortcut.index + 1)
                onActivated: view.app.root.select(shortcut.tag)
            }
        }
    }
    Shortcut {
        sequence: "Ctrl+N"
        onActivated: view.app.addMedicine.open()
    }
}

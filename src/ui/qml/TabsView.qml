// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates
import Pillora

// The five tabs: at the foot of a narrow window, beside a wide one. A tab's screen is loaded when it is first shown and
// then stays, with what is open and how far it is scrolled. Deliberate: QtQuick.Templates is imported and not used;
// shortcuts that are made before it is loaded would be heard behind a sheet, too.
FocusScope {
    id: view

    required property AppModel app
    readonly property var root: app.root.content
    readonly property bool wide: width >= 640

    component Tab: LateView {
        required property int tag
        readonly property bool isFront: view.root.selectedTab === tag

        anchors.fill: parent
        visible: isFront
        enabled: isFront
        focus: isFront
        wanted: isFront
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
            file: "TodayView.qml"
            properties: ({ app: view.app, model: view.app.today })
        }
        Tab {
            tag: 1
            file: "UpcomingView.qml"
            properties: ({ model: view.app.upcoming })
        }
        Tab {
            tag: 2
            file: "MedicineListView.qml"
            properties: ({ app: view.app, model: view.app.medicines })
        }
        Tab {
            tag: 3
            file: "ReminderHistoryView.qml"
            properties: ({ model: view.app.history })
        }
        Tab {
            tag: 4
            file: "SettingsView.qml"
            properties: ({ model: view.app.settings })
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
    LateView {
        file: "AddMedicineView.qml"
        properties: ({ model: view.app.addMedicine })
        wanted: view.app.addMedicine.isOpen
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

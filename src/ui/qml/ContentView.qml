// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// The root: the tabs, or while the app is locked the lock screen and nothing else. What was open below it is unloaded
// meanwhile; which sheet that was the models know.
FocusScope {
    id: view

    required property AppModel app
    readonly property var root: app.root.content

    focus: true
    LayoutMirroring.enabled: Theme.mirrored
    LayoutMirroring.childrenInherit: true

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }
    Optional {
        when: view.root.lockScreen === null

        TabsView {
            anchors.fill: parent
            focus: true
            app: view.app
        }
    }
    Optional {
        when: view.root.lockScreen !== null

        LockPanel {
            anchors.fill: parent
            focus: true
            lock: view.root.lockScreen
            onUnlocked: view.app.root.unlock()
            onPasscodeAsked: view.app.root.usePasscode()
        }
    }
}

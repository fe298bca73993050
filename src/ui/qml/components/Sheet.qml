// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A page that slides up over the others: from the lower edge of a phone, as a card on a desktop. It shows and hides
// as `shown` says; Esc, the way back and the dimmed outside only ask for that with dismissed().
T.Popup {
    id: sheet

    required property bool shown
    property string title: ""
    property var toolbar: null
    property real wanted: 0  // the height of what is inside, where that is less than a page
    default property alias content: body.data
    signal dismissed
    signal triggered(string id)

    readonly property real roomWide: parent ? parent.width : 360
    readonly property real roomHigh: parent ? parent.height : 720
    readonly property bool floating: roomWide >= 640

    parent: T.Overlay.overlay
    width: floating ? Math.min(540, roomWide - 96) : roomWide
    height: Math.min(floating ? Math.min(720, roomHigh - 64) : roomHigh - 28, wanted > 0 ? wanted + bar.height : 720 + roomHigh)
    x: (roomWide - width) / 2
    y: floating ? (roomHigh - height) / 2 : roomHigh - height
    modal: true
    focus: true
    padding: 0
    closePolicy: T.Popup.NoAutoClose

    // The focus returns to where it was.
    property Item before: null
    property bool beforeShown: false

    onAboutToShow: {
        before = parent?.Window.window?.activeFocusItem ?? null
        beforeShown = before?.visualFocus ?? false
    }
    onClosed: before?.forceActiveFocus(beforeShown ? Qt.TabFocusReason : Qt.PopupFocusReason)

    onShownChanged: shown ? open() : close()
    Component.onCompleted: if (shown)
        open()

    T.Overlay.modal: Rectangle {
        color: Theme.backdrop

        TapHandler {
            enabled: sheet.floating
            onTapped: sheet.dismissed()
        }
        Behavior on opacity {
            NumberAnimation { duration: Theme.calm }
        }
    }

    enter: Transition {
        NumberAnimation {
            property: "y"
            from: sheet.roomHigh
            duration: Theme.calm
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "y"
            to: sheet.roomHigh
            duration: Theme.calm
            easing.type: Easing.InCubic
        }
    }

    background: Rectangle {
        radius: Theme.radiusSheet
        color: Theme.background

        Shadow {
            z: -1
            radius: parent.radius
        }
        Rectangle {
            visible: !sheet.floating
            y: parent.height - height
            width: parent.width
            height: Theme.radiusSheet
            color: Theme.background
        }
    }

    contentItem: FocusScope {
        focus: true
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

        Keys.onEscapePressed: sheet.dismissed()
        Keys.onBackPressed: sheet.dismissed()

        NavigationBar {
            id: bar

            width: parent.width
            title: sheet.title
            toolbar: sheet.toolbar
            onTriggered: id => sheet.triggered(id)
        }
        Item {
            id: body

            anchors.top: bar.bottom
            anchors.bottom: parent.bottom
            width: parent.width
        }
    }
}

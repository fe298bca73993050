// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// A question or a message in the middle of the window. Return answers with the button in focus, which is the harmless
// one; Esc with cancel. `cancel` is left empty when there is nothing to cancel.
T.Popup {
    id: alert

    required property bool shown
    required property string title
    property string message: ""
    property string cancel: ""
    required property string confirm
    property bool isDestructive: false
    signal cancelled
    signal confirmed

    readonly property real room: parent ? parent.width : 360
    readonly property bool sideBySide: cancel !== "" && noButton.implicitWidth <= 124 && yesButton.implicitWidth <= 124

    parent: T.Overlay.overlay
    width: Math.min(312, room - 48)
    x: (room - width) / 2
    y: parent ? (parent.height - height) / 2 : 0
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 20
    bottomPadding: 16
    modal: true
    focus: true
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
    onOpened: (cancel === "" ? yesButton : noButton).forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.backdrop

        Behavior on opacity {
            NumberAnimation { duration: Theme.quick }
        }
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
        NumberAnimation { property: "scale"; from: 1.06; to: 1; duration: Theme.quick; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick }
    }

    background: Rectangle {
        radius: Theme.radiusSheet
        color: Theme.raised

        Shadow {
            z: -1
            radius: parent.radius
        }
    }

    contentItem: Column {
        spacing: 8
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.AlertMessage
        Accessible.name: alert.title
        Accessible.description: alert.message

        Keys.onEscapePressed: alert.cancel === "" ? alert.confirmed() : alert.cancelled()
        Keys.onBackPressed: alert.cancel === "" ? alert.confirmed() : alert.cancelled()

        Label {
            width: parent.width
            text: alert.title
            horizontalAlignment: Text.AlignHCenter
            size: Theme.headline
            font.weight: Font.DemiBold
        }
        Label {
            visible: text !== ""
            width: parent.width
            text: alert.message
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondary
            size: Theme.subheadline
            lineHeight: 1.1
        }
        Item {
            width: 1
            height: 4
        }
        Flow {
            width: parent.width
            spacing: 8

            PButton {
                id: noButton

                visible: alert.cancel !== ""
                width: alert.sideBySide ? (parent.width - 8) / 2 : parent.width
                text: alert.cancel
                sidePadding: 8
                tone: "grey"
                onClicked: alert.cancelled()
            }
            PButton {
                id: yesButton

                width: alert.sideBySide ? (parent.width - 8) / 2 : parent.width
                text: alert.confirm
                sidePadding: 8
                kind: "prominent"
                tone: alert.isDestructive ? "red" : "blue"
                onClicked: alert.confirmed()
            }
        }
    }
}

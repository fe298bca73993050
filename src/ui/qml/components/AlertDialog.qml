// SPDX-License-Identifier: MIT
import QtQuick

// A question or a message in the middle of the window. Return answers with the button in focus, which is the harmless
// one; Esc with cancel. `cancel` is left empty when there is nothing to cancel.
ModalCard {
    id: alert

    required property string title
    property string message: ""
    property string cancel: ""
    required property string confirm
    property bool isDestructive: false
    signal cancelled
    signal confirmed

    readonly property var given: ({ title: title, message: message, cancel: cancel, confirm: confirm })
    // The words that it had last, which its content has no more while it goes.
    property var words: given
    readonly property bool sideBySide: noButton.visible && noButton.implicitWidth <= 124 && yesButton.implicitWidth <= 124

    width: Math.min(312, roomWide - 48)
    padding: 20
    bottomPadding: 16
    role: Accessible.AlertMessage
    name: words.title
    description: words.message
    asksOutside: false
    onDismissed: noButton.visible ? cancelled() : confirmed()
    onGivenChanged: if (title !== "")
        words = given
    onOpened: (noButton.visible ? noButton : yesButton).forceActiveFocus(Qt.TabFocusReason)

    Label {
        width: parent.width
        text: alert.words.title
        horizontalAlignment: Text.AlignHCenter
        size: Theme.headline
        font.weight: Font.DemiBold
    }
    Label {
        visible: text !== ""
        width: parent.width
        text: alert.words.message
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

            visible: text !== ""
            width: alert.sideBySide ? (parent.width - 8) / 2 : parent.width
            text: alert.words.cancel
            sidePadding: 8
            tone: "grey"
            onClicked: alert.cancelled()
        }
        PButton {
            id: yesButton

            width: alert.sideBySide ? (parent.width - 8) / 2 : parent.width
            text: alert.words.confirm
            sidePadding: 8
            kind: "prominent"
            tone: alert.isDestructive ? "red" : "blue"
            onClicked: alert.confirmed()
        }
    }
}

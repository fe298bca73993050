// SPDX-License-Identifier: MIT
import QtQuick

// What lies over everything while the app is locked. `lock`: symbol, title, text, hint, unlock, usePasscode.
Rectangle {
    id: panel

    required property var lock
    signal unlocked
    signal passcodeAsked

    color: Theme.background

    CentredPage {
        anchors.fill: parent

        Column {
            anchors.centerIn: parent
            width: Math.min(parent.width - 48, 340)
            spacing: 10

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 104
                height: 104
                radius: 52
                color: Theme.tint("blue")

                Symbol {
                    anchors.centerIn: parent
                    name: panel.lock.symbol
                    size: 52
                    color: Theme.symbol("blue")
                }
            }
            Item {
                width: 1
                height: 6
            }
            Label {
                width: parent.width
                text: panel.lock.title
                horizontalAlignment: Text.AlignHCenter
                size: Theme.title2
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
            }
            Label {
                width: parent.width
                text: panel.lock.text
                horizontalAlignment: Text.AlignHCenter
                color: Theme.secondary
                size: Theme.subheadline
            }
            Item {
                width: 1
                height: 12
            }
            PButton {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(parent.width, Math.max(200, implicitWidth))
                kind: "prominent"
                text: panel.lock.unlock.title
                symbol: panel.lock.unlock.symbol
                focus: true
                onClicked: panel.unlocked()
            }
            Label {
                width: parent.width
                visible: text !== ""
                text: panel.lock.hint ?? ""
                horizontalAlignment: Text.AlignHCenter
                color: Theme.secondary
                size: Theme.footnote
            }
            PButton {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(parent.width, implicitWidth)
                visible: !!panel.lock.usePasscode
                kind: "plain"
                text: panel.lock.usePasscode?.title ?? ""
                onClicked: panel.passcodeAsked()
            }
        }
    }
}

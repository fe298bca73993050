// SPDX-License-Identifier: MIT
import QtQuick

// What stands where there is nothing to show yet: a symbol, a title, perhaps a text and what to do about it.
Column {
    id: panel

    required property string symbol
    required property string title
    property string text: ""
    property string action: ""
    property string actionSymbol: ""
    property string tone: "blue"
    signal triggered

    spacing: 8
    width: parent ? Math.min(parent.width, 340) : 340

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 88
        height: 88
        radius: 44
        color: Theme.tint(panel.tone)

        Symbol {
            anchors.centerIn: parent
            name: panel.symbol
            size: 46
            color: Theme.symbol(panel.tone)
        }
    }
    Item {
        width: 1
        height: 4
    }
    Label {
        width: parent.width
        text: panel.title
        horizontalAlignment: Text.AlignHCenter
        size: Theme.title3
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Label {
        visible: text !== ""
        width: parent.width
        text: panel.text
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondary
        size: Theme.subheadline
        lineHeight: 1.15
    }
    Item {
        visible: button.visible
        width: 1
        height: 8
    }
    PButton {
        id: button

        anchors.horizontalCenter: parent.horizontalCenter
        visible: panel.action !== ""
        kind: "prominent"
        text: panel.action
        symbol: panel.actionSymbol
        onClicked: panel.triggered()
    }
}

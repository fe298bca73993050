// SPDX-License-Identifier: MIT
import QtQuick

// A value that is picked on a sheet of its own; it may be one of several that can be taken away. `remove`: title and
// symbol, or null.
ListRow {
    id: control

    required property string label
    required property string value
    property var remove: null
    signal removed

    width: parent ? parent.width : implicitWidth
    interactive: true
    stackable: true
    text: label
    Accessible.name: label + ", " + value

    Row {
        anchors.right: parent.right
        spacing: 4

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: control.value
            wrapMode: Text.NoWrap
            color: Theme.accent
            font.weight: Font.Medium
            Accessible.ignored: true
        }
        IconButton {
            visible: control.remove !== null
            symbol: control.remove?.symbol ?? "minus.circle.fill"
            symbolSize: 22
            tone: "red"
            text: (control.remove?.title ?? "") + ", " + control.label
            onClicked: control.removed()
        }
    }
}

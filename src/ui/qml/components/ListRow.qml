// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// One row of a list section: a label, perhaps a symbol before and a detail below it, and at the end whatever is put
// inside. A value that does not fit beside the label stands below it.
Pressable {
    id: control

    property bool interactive: false
    property bool separated: !Positioner.isFirstItem
    property bool stackable: false
    property string symbol: ""
    property string detail: ""
    property real size: Theme.body
    property real detailSize: Theme.subheadline
    property int weight: Font.Normal
    property bool silent: interactive  // its words are said by what it holds, or by itself as a whole
    property string spoken: ""  // what a row that is only shown says as a whole
    property color tint: Theme.text
    property color symbolColor: Theme.symbol("blue")
    default property alias trailing: slot.data
    readonly property bool stacked: stackable && text !== ""
        && caption.implicitWidth + slot.implicitWidth + 12 > line.width - (symbol === "" ? 0 : 36)

    implicitWidth: 328
    implicitHeight: Math.max(Theme.rowHeight, line.implicitHeight + 16)
    focusGap: -2
    focusTarget: veil
    pressable: interactive
    Accessible.ignored: !interactive

    Rectangle {
        visible: control.separated
        x: Theme.padding
        width: parent.width - 2 * Theme.padding
        height: Theme.hairline
        color: Theme.separator
    }
    PressTint {
        id: veil

        anchors.fill: parent
        anchors.margins: 4
        radius: Theme.radius
        over: control
    }
    RowLayout {
        id: line

        x: Theme.padding
        y: 8
        width: parent.width - 2 * Theme.padding
        height: parent.height - 16
        spacing: 12
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true

        Symbol {
            visible: control.symbol !== ""
            name: control.symbol
            size: Math.max(24, Theme.body * 1.3)
            color: control.symbolColor
        }
        GridLayout {
            Layout.fillWidth: true
            columns: control.stacked ? 1 : 2
            columnSpacing: 8
            rowSpacing: 2

            ColumnLayout {
                visible: control.text !== ""
                spacing: 1

                Label {
                    id: caption

                    Layout.fillWidth: true
                    text: control.text
                    color: control.tint
                    size: control.size
                    font.weight: control.weight
                    Accessible.ignored: control.silent
                    Accessible.role: control.spoken === "" ? Accessible.StaticText : Accessible.ListItem
                    Accessible.name: control.spoken === "" ? text : control.spoken
                }
                Label {
                    Layout.fillWidth: true
                    visible: text !== ""
                    text: control.detail
                    color: Theme.secondary
                    size: control.detailSize
                    Accessible.ignored: control.silent || control.spoken !== ""
                }
            }
            Item {
                id: slot

                Layout.alignment: Qt.AlignRight | Qt.AlignVCenter
                Layout.fillWidth: control.stacked || control.text === ""
                implicitWidth: children.length > 0 ? children[0].implicitWidth : 0
                implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
                visible: children.length > 0
            }
        }
    }
}

// SPDX-License-Identifier: MIT
import QtQuick

// One tab of the bar or of the rail.
Pressable {
    id: control

    required property var row
    required property bool isSelected
    property bool wide: false
    readonly property color shade: isSelected ? Theme.accent : Theme.secondary

    text: row.title
    focusGap: -4

    voice: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: isSelected

    Rectangle {
        anchors.fill: parent
        radius: control.cornerRadius
        color: control.wide && control.isSelected ? Theme.tint("blue") : "transparent"

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
    Grid {
        columns: control.wide ? 2 : 1
        anchors.centerIn: control.wide ? undefined : parent
        anchors.verticalCenter: control.wide ? parent.verticalCenter : undefined
        width: parent.width
        spacing: control.wide ? 12 : 3
        leftPadding: control.wide ? 12 : 0
        rightPadding: leftPadding
        horizontalItemAlignment: Grid.AlignHCenter
        verticalItemAlignment: Grid.AlignVCenter
        LayoutMirroring.enabled: Theme.mirrored

        Rectangle {
            width: control.wide ? 26 : 52
            height: control.wide ? 26 : 28
            radius: 14
            color: control.isSelected && !control.wide ? Theme.tint("blue") : "transparent"

            Symbol {
                anchors.centerIn: parent
                name: control.row.symbol
                size: control.wide ? 24 : 23
                color: control.shade
            }
        }
        Label {
            width: parent.width - (control.wide ? 62 : 0)
            text: control.text
            wrapMode: Text.NoWrap
            fontSizeMode: control.wide ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 8
            elide: Text.ElideRight
            horizontalAlignment: control.wide ? Text.AlignLeft : Text.AlignHCenter
            color: control.wide && !control.isSelected ? Theme.text : control.shade
            size: control.wide ? Theme.subheadline : Math.min(Theme.caption2, 13)
            font.weight: control.isSelected ? Font.DemiBold : Font.Medium
            Accessible.ignored: true
        }
    }
}

// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// One tab of the bar or of the rail.
Pressable {
    id: control

    required property var row
    required property bool isSelected
    property bool wide: false
    readonly property color shade: isSelected ? Theme.accent : Theme.secondary

    text: row.title
    padding: 0
    cornerRadius: Theme.radius
    focusGap: -3

    Accessible.role: Accessible.PageTab
    Accessible.selected: isSelected

    contentItem: GridLayout {
        columns: control.wide ? 2 : 1
        rowSpacing: 2
        columnSpacing: 12
        LayoutMirroring.enabled: Theme.mirrored

        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            Layout.leftMargin: control.wide ? 12 : 0
            implicitWidth: control.wide ? 26 : 52
            implicitHeight: control.wide ? 26 : 28
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
            Layout.fillWidth: true
            text: control.text
            wrapMode: Text.NoWrap
            fontSizeMode: control.wide ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 8
            elide: control.wide ? Text.ElideRight : Text.ElideNone
            horizontalAlignment: control.wide ? Text.AlignLeft : Text.AlignHCenter
            color: control.wide && !control.isSelected ? Theme.text : control.shade
            size: control.wide ? Theme.subheadline : Theme.caption2
            font.weight: control.isSelected ? Font.DemiBold : Font.Medium
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: control.cornerRadius
        color: control.wide && control.isSelected ? Theme.tint("blue") : "transparent"

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
}

// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// The head of a screen or a sheet: buttons at both ends and the title between them, or large below them. `toolbar` are
// rows with `id`, `slot` ("cancellation" stands at the beginning, the others at the end), `title` and so on.
Item {
    id: bar

    property string title: ""
    property bool large: false
    property string backName: ""
    property var toolbar: null
    signal triggered(string id)
    signal wentBack

    readonly property real sides: Math.max(leading.width, trailing.width) + 8

    implicitWidth: 360
    implicitHeight: large ? Math.max(64, heading.implicitHeight + 20) : Math.max(56, heading.implicitHeight + 16)

    Row {
        id: leading

        x: Theme.mirrored ? bar.width - width - 8 : 8
        anchors.verticalCenter: parent.verticalCenter
        LayoutMirroring.enabled: Theme.mirrored

        IconButton {
            visible: bar.backName !== ""
            symbol: "chevron.left"
            text: bar.backName
            onClicked: bar.wentBack()
        }
        Repeater {
            model: bar.toolbar

            ToolbarButton {
                anchors.verticalCenter: parent?.verticalCenter
                visible: row.slot === "cancellation"
                onTriggered: id => bar.triggered(id)
            }
        }
    }
    Label {
        id: heading

        readonly property real start: bar.large && leading.width === 0 ? Theme.padding : bar.sides
        readonly property real end: bar.large ? trailing.width + 12 : bar.sides

        x: Theme.mirrored ? end : start
        width: bar.width - start - end
        anchors.verticalCenter: parent.verticalCenter
        text: bar.title
        horizontalAlignment: bar.large ? Text.AlignLeft : Text.AlignHCenter
        size: bar.large ? Theme.largeTitle : Theme.headline
        wrapMode: Text.WordWrap
        fontSizeMode: Text.HorizontalFit
        verticalAlignment: Text.AlignVCenter
        minimumPixelSize: 11
        font.weight: bar.large ? Font.Bold : Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Row {
        id: trailing

        x: Theme.mirrored ? 8 : bar.width - width - 8
        anchors.verticalCenter: parent.verticalCenter
        LayoutMirroring.enabled: Theme.mirrored

        Repeater {
            model: bar.toolbar

            ToolbarButton {
                anchors.verticalCenter: parent?.verticalCenter
                visible: row.slot !== "cancellation"
                onTriggered: id => bar.triggered(id)
            }
        }
    }
}

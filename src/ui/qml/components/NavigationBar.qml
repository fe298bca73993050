// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// The head of a screen or a sheet: buttons at both ends and the title between them, or below them where it would have to
// be much smaller than it should be. A `large` title stands at the beginning. `toolbar` are rows with `id`, `slot`
// ("cancellation" stands at the beginning, the others at the end), `title` and so on.
Item {
    id: bar

    property string title: ""
    property bool large: false
    property string backName: ""
    property var toolbar: null
    signal triggered(string id)
    signal wentBack

    readonly property real between: width - leading.width - trailing.width - 32
    readonly property bool below: !large && natural.advanceWidth * 0.85 > between
    readonly property real buttons: Math.max(leading.height, trailing.height)
    readonly property real buttonsMiddle: Math.max(56, buttons) / 2  // where the title is below them

    implicitWidth: 360
    implicitHeight: large ? Math.max(64, heading.implicitHeight + 20)
        : below ? buttonsMiddle + buttons / 2 + heading.implicitHeight + 8
        : Math.max(56, buttons, heading.implicitHeight + 16)

    TextMetrics {
        id: natural

        font: heading.font
        text: bar.title
    }

    Row {
        id: leading

        x: Theme.mirrored ? bar.width - width - 8 : 8
        y: Math.round((bar.below ? bar.buttonsMiddle : bar.height / 2) - height / 2)
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

        readonly property real sides: Math.max(leading.width, trailing.width) + 16
        readonly property bool centred: natural.advanceWidth <= bar.width - 2 * sides
        readonly property real start: bar.below || (bar.large && leading.width === 0) ? Theme.padding
            : centred && !bar.large ? sides : leading.width + 16
        readonly property real end: bar.below ? Theme.padding
            : bar.large ? trailing.width + 12 : centred ? sides : trailing.width + 16

        x: Theme.mirrored ? end : start
        y: bar.below ? bar.buttonsMiddle + bar.buttons / 2 : Math.round((bar.height - height) / 2)
        width: bar.width - start - end
        text: bar.title
        horizontalAlignment: bar.large ? Text.AlignLeft : Text.AlignHCenter
        size: bar.large ? Theme.largeTitle : Theme.headline
        wrapMode: bar.large ? Text.WordWrap : bar.below ? Text.Wrap : Text.NoWrap
        fontSizeMode: bar.below ? Text.FixedSize : Text.HorizontalFit
        verticalAlignment: Text.AlignVCenter
        minimumPixelSize: 11
        font.weight: bar.large ? Font.Bold : Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Row {
        id: trailing

        x: Theme.mirrored ? 8 : bar.width - width - 8
        y: Math.round((bar.below ? bar.buttonsMiddle : bar.height / 2) - height / 2)
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

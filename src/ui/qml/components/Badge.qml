// SPDX-License-Identifier: MIT
import QtQuick

// A short word on a capsule of its colour: pale for what is said in passing, solid for what must be seen.
Rectangle {
    id: badge

    required property string text
    property string tone: "blue"
    property bool solid: false
    property bool silent: false  // said already by what it stands in
    property real size: Theme.caption2
    property real sidePadding: 6
    property real endPadding: 2
    property int weight: Font.DemiBold

    implicitWidth: label.implicitWidth + 2 * sidePadding
    implicitHeight: label.implicitHeight + 2 * endPadding
    radius: height / 2
    color: solid ? Theme.solid(tone) : Qt.alpha(Theme.fill(tone), Theme.tintOpacity)

    Label {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, badge.width - 2 * badge.sidePadding)
        text: badge.text
        Accessible.ignored: badge.silent
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        color: badge.solid ? Theme.onSolid : Theme.ink(badge.tone)
        size: badge.size
        font.weight: badge.weight
    }
}

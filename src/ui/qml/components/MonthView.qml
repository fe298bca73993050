// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// One month of days to pick from, as the content gives it. `month`: title, previous, next, weekdays, weeks. The arrow
// keys walk over the days.
FocusScope {
    id: view

    required property var month
    signal picked(string day)
    signal wentBack
    signal wentForward

    readonly property real pitch: Math.min(48, width / 7)

    implicitWidth: 308
    implicitHeight: column.height

    function days(): var {
        const cells = []
        for (let w = 0; w < weeks.count; ++w) {
            const week = weeks.itemAt(w) as Row
            for (let d = 0; d < week.children.length; ++d) {
                if (week.children[d] instanceof DayButton)
                    cells.push(week.children[d])
            }
        }
        return cells
    }
    function walk(from: Item, by: int) {
        const cells = days()
        cells[cells.indexOf(from) + by]?.forceActiveFocus(Qt.TabFocusReason)
    }
    // To the month before or after, whose days are others: the one in the same place gets the focus.
    property int place: -1
    function turn(isBack: bool) {
        place = days().findIndex(day => day.activeFocus)
        isBack ? wentBack() : wentForward()
    }
    function comeBack() {
        const cells = days()
        if (place >= 0)
            cells[Math.min(place, cells.length - 1)]?.forceActiveFocus(Qt.TabFocusReason)
        place = -1
    }

    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown
        if (event.accepted)
            turn(event.key === Qt.Key_PageUp)
    }

    Column {
        id: column

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 7 * 48)
        spacing: 4

        Item {
            width: parent.width
            height: Math.max(Theme.touch, title.implicitHeight)

            Label {
                id: title

                anchors.verticalCenter: parent.verticalCenter
                x: Theme.mirrored ? parent.width - width - 8 : 8
                width: parent.width - 112
                text: view.month.title
                font.weight: Font.DemiBold
                size: Theme.headline
                Accessible.role: Accessible.Heading
            }
            Row {
                x: Theme.mirrored ? -4 : parent.width - width + 4
                anchors.verticalCenter: parent.verticalCenter
                LayoutMirroring.enabled: Theme.mirrored
                spacing: 4

                IconButton {
                    symbol: "chevron.left"
                    symbolSize: 20
                    kind: "tinted"
                    text: view.month.previous.title
                    onClicked: view.wentBack()
                }
                IconButton {
                    symbol: "chevron.right"
                    symbolSize: 20
                    kind: "tinted"
                    text: view.month.next.title
                    onClicked: view.wentForward()
                }
            }
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            LayoutMirroring.enabled: Theme.mirrored

            Repeater {
                model: view.month.weekdays

                Label {
                    required property string modelData

                    width: view.pitch
                    text: modelData
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.NoWrap
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 8
                    elide: Text.ElideRight
                    color: Theme.secondary
                    size: Math.min(Theme.caption, 15)
                    font.weight: Font.DemiBold
                    Accessible.ignored: true
                }
            }
        }
        Column {
            anchors.horizontalCenter: parent.horizontalCenter

            Repeater {
                id: weeks

                model: view.month.weeks

                Row {
                    id: week

                    required property var row

                    anchors.horizontalCenter: parent?.horizontalCenter
                    LayoutMirroring.enabled: Theme.mirrored

                    Repeater {
                        model: week.row.cells

                        DayButton {
                            id: day

                            required property var row

                            width: view.pitch
                            height: view.pitch + column.spacing
                            diameter: Math.min(38, view.pitch - 2)
                            text: row.text
                            isSelected: row.isSelected
                            isToday: row.isToday
                            isFaint: !row.isInMonth
                            filled: false
                            voice: Accessible.RadioButton
                            enabled: row.text !== ""
                            focus: isSelected
                            onClicked: view.picked(row.id)
                            Keys.onLeftPressed: view.walk(day, Theme.mirrored ? 1 : -1)
                            Keys.onRightPressed: view.walk(day, Theme.mirrored ? -1 : 1)
                            Keys.onUpPressed: view.walk(day, -7)
                            Keys.onDownPressed: view.walk(day, 7)
                            Accessible.name: row.label
                            Component.onCompleted: Qt.callLater(view.comeBack)  // qmllint disable type
                        }
                    }
                }
            }
        }
    }
}

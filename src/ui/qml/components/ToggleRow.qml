// SPDX-License-Identifier: MIT
import QtQuick

// A switch with its label; the whole row is pressed. `row`: label, isLabelHidden, isOn.
ListRow {
    id: control

    required property var row
    signal edited(bool isOn)

    width: parent ? parent.width : implicitWidth
    text: row.isLabelHidden ? "" : row.label
    Accessible.name: row.label
    interactive: true
    onClicked: edited(!row.isOn)

    voice: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: row.isOn
    Accessible.onToggleAction: activate()

    Toggle {
        anchors.right: parent.right
        isOn: control.row.isOn
        takesFocus: false
        opacity: 1
        Accessible.ignored: true
        onToggled: isOn => control.edited(isOn)
    }
}

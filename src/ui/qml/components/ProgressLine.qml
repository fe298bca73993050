// SPDX-License-Identifier: MIT
import QtQuick

// What is under way, in words; nothing while nothing is.
Row {
    property alias text: label.text

    anchors.horizontalCenter: parent.horizontalCenter
    visible: text !== ""
    spacing: 10

    ProgressSpinner {
        anchors.verticalCenter: parent.verticalCenter
    }
    Label {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        size: Theme.subheadline
    }
}

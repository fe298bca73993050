// SPDX-License-Identifier: MIT
import QtQuick

// One control of the sheet, in each of its `states`.
QtObject {
    property string title
    property string states: "normal hovered pressed focused disabled"
    property real width: 328
    property bool onSurface: false
    default property Component body
}

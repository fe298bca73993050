// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// Where one thing at a time is put to be drawn.
Rectangle {
    id: stage

    property bool onSurface: false
    property Component body: null
    property alias shown: loader.item
    property real place: 16

    color: onSurface ? Theme.surface : Theme.background
    LayoutMirroring.enabled: Theme.mirrored
    LayoutMirroring.childrenInherit: true

    Loader {
        id: loader

        x: stage.place
        y: stage.place
        sourceComponent: stage.body
    }
}

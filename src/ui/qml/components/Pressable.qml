// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// What every button is: pressed by touch, mouse, Space, Return and by a screen reader alike, with a visible focus.
T.AbstractButton {
    id: control

    property real cornerRadius: Theme.radius
    property real focusGap: 2
    property Item focusTarget: control
    property int voice: Accessible.Button

    // As if it had been pressed.
    function activate() {
        if (enabled)
            clicked()
    }

    implicitWidth: Math.max(Theme.touch, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Theme.touch, implicitContentHeight + topPadding + bottomPadding)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity

    Keys.onReturnPressed: control.activate()
    Keys.onEnterPressed: control.activate()

    Accessible.role: voice
    Accessible.name: control.text
    Accessible.onPressAction: control.activate()

    FocusRing {
        parent: control.focusTarget
        shown: control.visualFocus
        gap: control.focusGap
        cornerRadius: control.cornerRadius
    }
}

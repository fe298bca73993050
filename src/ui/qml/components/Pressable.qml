// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// What every button is: pressed by touch, mouse, Space, Return and by a screen reader alike, with a visible focus.
T.AbstractButton {
    id: control

    property real cornerRadius: Theme.radius
    property real focusGap: 2

    implicitWidth: Math.max(Theme.touch, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Theme.touch, implicitContentHeight + topPadding + bottomPadding)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity

    Keys.onReturnPressed: control.click()
    Keys.onEnterPressed: control.click()

    Accessible.role: Accessible.Button
    Accessible.name: control.text
    Accessible.onPressAction: control.click()

    FocusRing {
        shown: control.visualFocus
        gap: control.focusGap
        radius: control.cornerRadius + gap
    }
}

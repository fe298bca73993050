// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick
import Pillora

// Every colour, size and duration that is drawn. Sizes are pixels at a scale of 1; texts grow with the person's font
// size, and what holds text grows with it.
QtObject {
    id: theme

    readonly property bool dark: Appearance.dark
    readonly property bool highContrast: Appearance.highContrast
    readonly property bool mirrored: Appearance.mirrored
    readonly property string fontFamily: Appearance.fontFamily

    // Type.
    readonly property real scale: Appearance.fontScale
    readonly property real largeTitle: 34 * scale
    readonly property real title2: 22 * scale
    readonly property real title3: 20 * scale
    readonly property real headline: 17 * scale
    readonly property real body: 17 * scale
    readonly property real subheadline: 15 * scale
    readonly property real footnote: 13 * scale
    readonly property real caption: 12 * scale
    readonly property real caption2: 11 * scale

    // Distances.
    readonly property real padding: 16
    readonly property real touch: 44
    readonly property real rowHeight: Math.max(52, 30 + 22 * scale)
    readonly property real hairline: 1
    readonly property real readableWidth: 680

    readonly property real radius: 12
    readonly property real radiusCard: 16
    readonly property real radiusSheet: 22

    // Surfaces, from the farthest to the nearest.
    readonly property color background: dark ? "#111316" : "#f4f3f0"
    readonly property color surface: dark ? "#1d2025" : "#ffffff"
    readonly property color raised: dark ? "#23272d" : "#ffffff"
    readonly property color field: dark ? "#2a2e35" : "#eae8e4"
    readonly property color segment: dark ? "#4a505a" : "#ffffff"
    readonly property color separator: highContrast ? outline : dark ? "#31353c" : "#e6e3de"
    readonly property color outline: highContrast ? secondary : dark ? "#7b818b" : "#868a91"
    readonly property color backdrop: dark ? "#8c000000" : "#66191b20"
    readonly property color hover: dark ? "#0fffffff" : "#0a191b20"
    readonly property color press: dark ? "#1fffffff" : "#17191b20"

    // Texts on any of them.
    readonly property color text: dark ? "#f1f2f4" : "#1b1e24"
    readonly property color secondary: highContrast ? (dark ? "#d5d9df" : "#363b43") : dark ? "#adb3bd" : "#5a606a"
    readonly property color placeholder: highContrast ? secondary : dark ? "#969ca7" : "#636871"
    readonly property color onSolid: "#ffffff"
    readonly property color accent: ink("blue")
    readonly property color shadow: dark ? "#0d000000" : "#03000000"
    readonly property color focus: dark ? "#8ab4ff" : "#2f6fe0"

    readonly property real disabledOpacity: 0.42
    readonly property real tintOpacity: 0.15

    // Motion. Nothing moves for a person who asked for less of it.
    readonly property int quick: Appearance.reducedMotion ? 0 : 120
    readonly property int calm: Appearance.reducedMotion ? 0 : 240
    // What lasts while something is under way.
    readonly property int round: 900
    readonly property int breath: 1200

    // The medicines' and the statuses' colours. `fill` is the colour itself, for areas; `symbol` what stands out from
    // a surface and from its own tint, for drawings; `ink` the same for text; `solid` carries white.
    readonly property var lightFill: ({
            blue: "#2f6fe0", green: "#2b9a57", red: "#da4438", orange: "#e07a1b", purple: "#8b54d8",
            pink: "#d8478a", yellow: "#e5b214", teal: "#0f8fa6", indigo: "#5559d8", mint: "#16ad95", grey: "#7c828c"
        })
    readonly property var lightSymbol: ({
            blue: "#2f6fe0", green: "#289252", red: "#da4438", orange: "#cb6509", purple: "#8b54d8",
            pink: "#d8478a", yellow: "#a57a00", teal: "#0d899f", indigo: "#5559d8", mint: "#0c8c78", grey: "#767c86"
        })
    readonly property var lightInk: ({
            blue: "#205ac6", green: "#1a6f3e", red: "#b22d23", orange: "#964b05", purple: "#7543c2",
            pink: "#aa2b67", yellow: "#755500", teal: "#09687a", indigo: "#4649bf", mint: "#0a6c5c", grey: "#585e69"
        })
    readonly property var darkFill: ({
            blue: "#74a6ff", green: "#4dc67b", red: "#ff8478", orange: "#ffa350", purple: "#bb92ff",
            pink: "#ff8abb", yellow: "#f0c94c", teal: "#4fc4d8", indigo: "#9da1ff", mint: "#5edac0", grey: "#a3a9b4"
        })
    readonly property var solids: ({
            blue: "#2f6fe0", green: "#21854a", red: "#cb392e", orange: "#b25a08", purple: "#8249d2",
            pink: "#c63879", yellow: "#8b6600", teal: "#0b788b", indigo: "#5559d8", mint: "#0b7d6b", grey: "#686e78"
        })

    function fill(name: string): color {
        return pick(dark ? darkFill : lightFill, name)
    }
    function symbol(name: string): color {
        return pick(dark ? darkFill : lightSymbol, name)
    }
    function ink(name: string): color {
        return pick(dark ? darkFill : lightInk, name)
    }
    function solid(name: string): color {
        return pick(solids, name)
    }
    function tint(name: string): color {
        return Qt.alpha(fill(name), tintOpacity)
    }
    // Two names are surfaces' own; a name that nobody knows is blue.
    function pick(table: var, name: string): color {
        if (name === "secondary")
            return secondary
        if (name === "primary")
            return text
        return table.hasOwnProperty(name) ? table[name] : table.blue
    }
}

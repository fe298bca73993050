// SPDX-License-Identifier: MIT
// How much too early or too late a dose was taken.
Badge {
    size: Theme.caption2
    sidePadding: 6
    endPadding: 2
}

// SPDX-License-Identifier: MIT
// The same form, scrolled.
FormPage {
    objectName: "end"
}

// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace pillora {

/// Whom a request is about: its first 36 characters where these are a medicine's identifier, otherwise all of it. Of a
/// medicine's overdue requests only the newest is shown.
std::string_view medicineOf(std::string_view requestIdentifier);

/// The dose a request is about: a follow-up's identifier without "-followup-" and its number, any other as it stands.
/// All requests of a dose share one bubble.
std::string_view doseOf(std::string_view requestIdentifier);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <vector>

#include "doubles/Instants.h"
#include "doubles/ScreenFixture.h"
#include "screens/AddMedicineView.h"
#include "screens/FormRows.h"

namespace pillora {

// America/New_York, en_US; Friday, 2025-01-10, 22:10.
inline const Instant kOpened = at("2025-01-10T22:10:00-05:00");

/// A form that has just been opened.
class AddMedicineViewTest : public testing::Test {
 protected:
  Lines section(std::string_view id) const { return linesOf(sectionNamed(form_.content().sections, id)); }
  bool canSave() const { return form_.content().toolbar.at(1).isEnabled; }
  std::shared_ptr<Medicine> saved() {
    form_.setText("name", "Aspirin");
    const auto id = form_.save();
    return id ? fixture_.context().find<Medicine>(*id) : nullptr;
  }
  std::vector<std::shared_ptr<Medicine>> stored() { return *fixture_.context().fetch<Medicine>(); }

  ScreenFixture fixture_{kOpened};
  AddMedicineView form_{fixture_.environment()};
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "app/AuthenticationManager.h"
#include "screens/Content.h"
#include "screens/Screen.h"
#include "support/Fields.h"

namespace pillora {

/// One tab of the app.
struct TabItem {
  int tag = 0;     ///< what ContentView::selectedTab holds while it is in front
  std::string id;  ///< names the screen in every language
  std::string title, symbol;

  bool operator==(const TabItem&) const = default;
  static constexpr auto fields() {
    return std::tuple(field("tag", &TabItem::tag), field("id", &TabItem::id), field("title", &TabItem::title),
                      field("symbol", &TabItem::symbol));
  }
};

/// What lies over the tabs while the app is locked.
struct LockScreenView {
  std::string symbol, title, text;
  /// What to do while a fingerprint is waited for: its reader shows no prompt of its own.
  std::optional<std::string> hint;
  ActionItem unlock;  ///< "unlock"; its action is unlock()
  std::string unlockTextColor, unlockColor;
  std::optional<ActionItem> usePasscode;  ///< "usePasscode", beside the hint; its action is usePasscode()

  bool operator==(const LockScreenView&) const = default;
  static constexpr auto fields() {
    using Lock = LockScreenView;
    return std::tuple(field("symbol", &Lock::symbol), field("title", &Lock::title), field("text", &Lock::text),
                      field("hint", &Lock::hint), field("unlock", &Lock::unlock),
                      field("unlockTextColor", &Lock::unlockTextColor), field("unlockColor", &Lock::unlockColor),
                      field("usePasscode", &Lock::usePasscode));
  }
};

struct RootContent {
  std::vector<TabItem> tabs;
  int selectedTab = 0;
  std::string tint;
  /// When there is one, nothing else is shown or can be reached, by key, shortcut or screen reader either: neither the
  /// tabs nor the sheets and alerts that were open.
  std::optional<LockScreenView> lockScreen;

  static constexpr auto fields() {
    using Root = RootContent;
    return std::tuple(field("tabs", &Root::tabs), field("selectedTab", &Root::selectedTab), field("tint", &Root::tint),
                      field("lockScreen", &Root::lockScreen));
  }
};

/// The root of the app: its tabs, and the lock over them. Redraw on a change of the store or of the manager.
class ContentView {
 public:
  ContentView(ScreenEnvironment environment, AuthenticationManager& authentication);

  RootContent content() const;

  /// The setting asks for authentication and nobody has authenticated. Goes by the settings record itself, so switching
  /// the setting on locks at once. Without a settings record there is no lock.
  bool isLocked() const;
  void unlock() { authentication_.authenticate(); }
  void usePasscode() { authentication_.cancelBiometrics(); }

  int selectedTab = 0;  ///< a tag of the tabs; the first one at the start

 private:
  LockScreenView lockScreen() const;

  ScreenEnvironment environment_;
  AuthenticationManager& authentication_;
  LiveQuery<AppSettings> settings_;
};

}  // namespace pillora

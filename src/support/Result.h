// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace pillora {

/// Why an operation failed, as one line of text for a person or the console.
struct Error {
  std::string description;

  bool operator==(const Error&) const = default;
};

/// The value of an operation, or the error that kept it from having one.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  explicit operator bool() const { return state_.index() == 0; }
  T& operator*() & { return *std::get_if<0>(&state_); }
  const T& operator*() const& { return *std::get_if<0>(&state_); }
  T&& operator*() && { return std::move(*std::get_if<0>(&state_)); }
  T* operator->() { return std::get_if<0>(&state_); }
  const T* operator->() const { return std::get_if<0>(&state_); }
  const Error& error() const { return *std::get_if<1>(&state_); }

 private:
  std::variant<T, Error> state_;
};

template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)), failed_(true) {}

  explicit operator bool() const { return !failed_; }
  const Error& error() const { return error_; }

 private:
  Error error_;
  bool failed_ = false;
};

}  // namespace pillora

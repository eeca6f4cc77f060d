// Makes a routine callable by words: its parameters say how each word is read, its result how it is
// printed.
#pragma once

#include <array>
#include <concepts>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "app/rehearse/console/program.h"
#include "app/rehearse/console/values.h"
#include "platform/types.h"
#include "runtime/text.h"

namespace qb::rehearse {

template <typename Subject>
struct Routine {
  std::string_view name;
  using call_type = std::function<CallOutcome(Subject& subject, const std::vector<std::string>& arguments)>;
  call_type call;
};

namespace binding {

template <typename T>
struct IsOptional : std::false_type {};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {};

// Reads a word as a parameter of type T; nothing if it is none. A flag is 0 or 1, a root of the registry
// "HKCU" or "HKLM".
template <typename T>
std::optional<T> Read(const std::string& word) {
  if constexpr (IsOptional<T>::value) {
    auto value = Read<typename T::value_type>(word);
    return value ? std::optional<T>(std::in_place, *value) : std::nullopt;
  } else if constexpr (std::same_as<T, std::string>) {
    return word;
  } else if constexpr (std::same_as<T, bool>) {
    return word == "1" || word == "0" ? std::optional(word == "1") : std::nullopt;
  } else if constexpr (std::same_as<T, KeyHandle>) {
    if (SameText(word, "HKCU")) return KeyHandle::CurrentUser;
    if (SameText(word, "HKLM")) return KeyHandle::LocalMachine;
    return std::nullopt;
  } else if constexpr (std::floating_point<T>) {
    auto number = WholeNumber(word);
    return number ? std::optional<T>(static_cast<T>(*number)) : std::nullopt;
  } else {
    static_assert(std::integral<T>);
    bool negative = std::is_signed_v<T> && word.starts_with('-');
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<T>::max());
    auto number = ParseNumber(negative ? std::string_view(word).substr(1) : word, negative ? kMost + 1 : kMost);
    if (!number) return std::nullopt;
    return static_cast<T>(negative ? std::uint64_t{0} - *number : *number);
  }
}

// Adds what a routine returned, one value a line.
template <typename T>
void Print(std::vector<std::string>& lines, const T& value) {
  if constexpr (IsOptional<T>::value) {
    if (value) Print(lines, *value);
  } else if constexpr (std::same_as<T, bool>) {
    lines.emplace_back(value ? "true" : "false");
  } else if constexpr (std::floating_point<T>) {
    lines.push_back(NumberText(value));
  } else if constexpr (std::integral<T>) {
    lines.push_back(std::to_string(value));
  } else if constexpr (std::convertible_to<T, std::string_view>) {
    lines.emplace_back(std::string_view(value));
  } else {
    std::apply([&](const auto&... values) { (Print(lines, values), ...); }, value);
  }
}
inline void Print(std::vector<std::string>& lines, const std::vector<std::string>& values) {
  lines.insert(lines.end(), values.begin(), values.end());
}

template <typename Subject, typename Function, typename Result, typename... Parameters, std::size_t... place>
CallOutcome Invoke(Subject& subject, const Function& function, const std::vector<std::string>& words,
                   std::index_sequence<place...>, std::type_identity<Result(Parameters...)>) {
  constexpr std::size_t kMost = sizeof...(Parameters);
  constexpr std::size_t kLeast = kMost - (std::size_t{IsOptional<Parameters>::value} + ... + 0);
  if (words.size() < kLeast || words.size() > kMost) return {CallOutcome::Kind::WrongArguments, {}};
  // A parameter that may be left out, and is, is an empty optional.
  [[maybe_unused]] auto read = [&words]<typename T>(std::size_t i, std::type_identity<T>) -> std::optional<T> {
    if constexpr (IsOptional<T>::value) {
      if (i >= words.size()) return std::optional<T>(std::in_place);
    }
    return Read<T>(words[i]);
  };
  std::tuple<std::optional<Parameters>...> values{read(place, std::type_identity<Parameters>())...};
  if (!(std::get<place>(values).has_value() && ...)) return {CallOutcome::Kind::WrongArguments, {}};
  CallOutcome outcome;
  if constexpr (std::is_void_v<Result>) {
    function(subject, *std::get<place>(values)...);
  } else {
    Print(outcome.lines, function(subject, *std::get<place>(values)...));
  }
  return outcome;
}

template <typename Function, typename Subject, typename Result, typename... Parameters>
auto BindAs(Function function, Result (Function::*)(Subject&, Parameters...) const) {
  return [function](Subject& subject, const std::vector<std::string>& words) {
    return Invoke(subject, function, words, std::index_sequence_for<Parameters...>(),
                  std::type_identity<Result(std::remove_cvref_t<Parameters>...)>());
  };
}

}  // namespace binding

// `function` is a lambda that takes the subject by reference and then the parameters by value. Those of
// std::optional may be left out at the end.
template <typename Function>
auto Bind(Function function) {
  return binding::BindAs(function, &Function::operator());
}

}  // namespace qb::rehearse

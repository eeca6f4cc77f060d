// One operation of a machine from end to end: `gate.Call<"Name">(arguments).Returns…(body)`. The body runs unless the
// gate refuses the call, the failure value stands in for it then, and the call is recorded with what came out.
#pragma once

#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>

#include "platform/machine/gate.h"
#include "platform/text_buffer.h"

namespace qb::machine {

// Arguments that the seam does not carry as values.
struct NullArgument {};
struct StructureArgument {};
inline constexpr NullArgument kNull;
inline constexpr StructureArgument kStructure;
// A structure, or null where the caller gives none.
constexpr std::optional<StructureArgument> StructureIf(bool there) {
  return there ? std::optional(kStructure) : std::nullopt;
}
struct Bytes {
  explicit Bytes(std::size_t size) : count(size) {}
  explicit Bytes(const TextBuffer& buffer) : count(buffer.size()) {}
  // A null buffer shows as null.
  explicit Bytes(std::span<const char> buffer) : count(buffer.size()), null(buffer.data() == nullptr) {}
  std::size_t count;
  bool null = false;
};

namespace record {

inline void Pack(PackedCall& call, std::string_view text) {
  call.Text(text);
}
inline void Pack(PackedCall& call, NullArgument) {
  call.Null();
}
inline void Pack(PackedCall& call, StructureArgument) {
  call.Structure();
}
inline void Pack(PackedCall& call, Bytes bytes) {
  bytes.null ? call.Null() : call.Bytes(bytes.count);
}
// Handles are the enumerations of 64 bits; 32-bit numbers show unsigned.
template <typename Value>
requires(std::is_enum_v<Value> || std::is_integral_v<Value>) void Pack(PackedCall& call, Value value) {
  if constexpr (std::is_enum_v<Value> && sizeof(Value) == sizeof(std::uint64_t))
    call.Handle(static_cast<std::uint64_t>(value));
  else if constexpr (std::is_enum_v<Value>)
    call.Number(static_cast<std::uint32_t>(value));
  else
    call.Number(static_cast<std::make_unsigned_t<std::conditional_t<std::is_same_v<Value, bool>, char, Value>>>(value));
}
template <typename Value>
void Pack(PackedCall& call, const std::optional<Value>& value) {
  value ? Pack(call, *value) : call.Null();
}

template <typename Outcome>
struct Traits {
  static Outcome Failed(Error) { return Outcome{}; }
  static bool Succeeded(const Outcome& outcome) { return outcome != Outcome{}; }
  static const Outcome& Value(const Outcome& outcome) { return outcome; }
};
template <>
struct Traits<Error> {
  static Error Failed(Error error) { return error; }
  static bool Succeeded(Error outcome) { return Ok(outcome); }
  static Error Value(Error outcome) { return outcome; }
};
template <typename T>
struct Traits<Result<T>> {
  static Result<T> Failed(Error error) { return error; }
  static bool Succeeded(const Result<T>& outcome) { return outcome.ok(); }
  static T Value(const Result<T>& outcome) { return outcome.ok() ? outcome.value : T{}; }
};

}  // namespace record

template <typename... Arguments>
class Operation {
 public:
  // The arguments are read when the call is recorded, so that those which it fills show what came out.
  Operation(Gate& gate, OperationNumber number, const Arguments&... arguments)
      : gate_(gate), begun_(gate.Here()), number_(number), arguments_(arguments...) {}

  // A boolean, by whether it succeeded.
  template <typename Body>
  auto ReturnsBool(Body&& body) {
    return Run(body,
               [](PackedCall& call, const auto& outcome) { call.Number(Of(outcome).Succeeded(outcome) ? 1 : 0); });
  }
  // The error number itself.
  template <typename Body>
  auto ReturnsStatus(Body&& body) {
    return Run(body, [](PackedCall& call, const auto& outcome) { record::Pack(call, StatusOf(outcome)); });
  }
  // The value, a number or a handle, or `failure` where there is none.
  template <typename Body>
  auto ReturnsValue(Body&& body) {
    return Run(body, [](PackedCall& call, const auto& outcome) { record::Pack(call, Of(outcome).Value(outcome)); });
  }
  template <typename Body, typename Failure>
  auto ReturnsValue(Body&& body, Failure failure) {
    return Run(body, [failure](PackedCall& call, const auto& outcome) {
      Of(outcome).Succeeded(outcome) ? record::Pack(call, Of(outcome).Value(outcome)) : record::Pack(call, failure);
    });
  }
  // What `shown` makes of the outcome.
  template <typename Body, typename Shown>
  auto ReturnsAs(Body&& body, Shown shown) {
    return Run(body, [&shown](PackedCall& call, const auto& outcome) { record::Pack(call, shown(outcome)); });
  }
  // A number that is itself the result; refused, it is `failure`.
  template <typename Body, typename Number>
  Number ReturnsNumberOr(Number failure, Body&& body) {
    const Number outcome = Ok(gate_.Enter(number_)) ? body() : failure;
    Record([outcome](PackedCall& call) { record::Pack(call, outcome); });
    return outcome;
  }
  template <typename Body>
  void ReturnsNothing(Body&& body) {
    if (Ok(gate_.Enter(number_))) body();
    Record([](PackedCall&) {});
  }

 private:
  template <typename Outcome>
  static record::Traits<Outcome> Of(const Outcome&) {
    return {};
  }
  static Error StatusOf(Error error) { return error; }
  template <typename T>
  static Error StatusOf(const Result<T>& outcome) {
    return outcome.error;
  }

  template <typename Body, typename Show>
  auto Run(Body& body, Show show) {
    const Error refused = gate_.Enter(number_);
    using Outcome = std::invoke_result_t<Body>;
    Outcome outcome = Ok(refused) ? body() : record::Traits<Outcome>::Failed(refused);
    Record([&](PackedCall& call) { show(call, outcome); });
    return outcome;
  }
  template <typename Show>
  void Record(Show show) {
    if (!gate_.recording()) return;
    const Gate::Place added = gate_.Here();
    PackedCall call = gate_.NewCall(number_);
    std::apply([&call](const auto&... argument) { (record::Pack(call, argument), ...); }, arguments_);
    call.Result();
    show(call);
    call.End();
    gate_.PutInPlace(begun_, added);
  }

  Gate& gate_;
  Gate::Place begun_;
  OperationNumber number_;
  std::tuple<const Arguments&...> arguments_;
};

template <OperationName kName, typename... Arguments>
Operation<Arguments...> Gate::Call(const Arguments&... arguments) {
  return {*this, kOperationNumber<kName>, arguments...};
}

}  // namespace qb::machine

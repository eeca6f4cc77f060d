// The one COM class that a machine knows: the browser's history store.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

constexpr std::string_view kHistoryStore = "{3C374A40-BAE4-11CF-BF7D-00AA006946EE}";
constexpr auto kClassNotRegistered = static_cast<Error>(0x80040154);  // REGDB_E_CLASSNOTREG
constexpr std::uint32_t kRelease = 8;  // byte offset of Release in a table of 4-byte entries

class MachineCom final : public Com {
 public:
  explicit MachineCom(MachineState& state) : state_(state) {}

  Result<ComObject> CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                     std::string_view /*interface_id*/) override {
    ComObject made = ComObject::None;
    return gate_.Call<"CoCreateInstance">(kStructure, kNull, context, kStructure, made)
        .ReturnsStatus([&]() -> Result<ComObject> {
          if (FoldName(class_id) != kHistoryStore) return kClassNotRegistered;
          return made = static_cast<ComObject>(state_.NewHandle());
        });
  }

  Result<std::uint32_t> DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                     std::uint32_t result_type) override {
    return gate_.Call<"DispCallFunc">(object, offset, convention, result_type, 0, kNull, kNull, kStructure)
        .ReturnsStatus([&]() -> Result<std::uint32_t> {
          if (state_.open_handles.count(Plain(object)) == 0) return Error::InvalidParameter;
          if (offset == kRelease) state_.open_handles.erase(Plain(object));
          return 0u;
        });
  }

 private:
  MachineState& state_;
  Gate& gate_ = state_.gate;
};

}  // namespace

std::unique_ptr<Com> MakeCom(MachineState& state) {
  return std::make_unique<MachineCom>(state);
}

}  // namespace qb::machine

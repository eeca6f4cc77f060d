// The cryptographic random source of a machine.
#include <random>

#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

constexpr auto kProviderUnknown = static_cast<Error>(0x80090019);  // NTE_KEYSET_NOT_DEF
constexpr auto kOtherType = static_cast<Error>(0x8009001B);        // NTE_PROV_TYPE_NO_MATCH
constexpr auto kNoKeys = static_cast<Error>(0x80090016);           // NTE_BAD_KEYSET
constexpr auto kBadFlags = static_cast<Error>(0x80090009);         // NTE_BAD_FLAGS

class MachineRandomSource final : public RandomSource {
 public:
  explicit MachineRandomSource(MachineState& state) : state_(state) {}

  Result<CryptContext> CryptAcquireContextA(std::optional<std::string_view> container,
                                            std::optional<std::string_view> provider, std::uint32_t type,
                                            std::uint32_t flags) override {
    CryptContext made = CryptContext::None;
    return gate_.Call<"CryptAcquireContextA">(made, container, provider, type, flags)
        .ReturnsBool([&]() -> Result<CryptContext> {
          if (provider == kEnhancedProvider && type != kProviderRsaFull) return kOtherType;
          if (type != kProviderRsaFull || (provider && *provider != kEnhancedProvider)) return kProviderUnknown;
          // No account has keys here.
          if ((flags & kCryptVerifyContext) != kCryptVerifyContext) return kNoKeys;
          return made = static_cast<CryptContext>(state_.NewHandle());
        });
  }

  Error CryptGenRandom(CryptContext context, Buffer buffer) override {
    return gate_.Call<"CryptGenRandom">(context, buffer.size(), Bytes(buffer)).ReturnsBool([&] {
      if (!IsOpen(context)) return Error::InvalidHandle;
      std::generate(buffer.begin(), buffer.end(), [this] { return static_cast<char>(generator_() >> 56); });
      return Error::Success;
    });
  }

  Error CryptReleaseContext(CryptContext context, std::uint32_t flags) override {
    return gate_.Call<"CryptReleaseContext">(context, flags).ReturnsBool([&] {
      if (!IsOpen(context)) return Error::InvalidHandle;
      state_.open_handles.erase(Plain(context));
      return flags == 0 ? Error::Success : kBadFlags;  // given back all the same
    });
  }

 private:
  bool IsOpen(CryptContext context) const { return state_.open_handles.count(Plain(context)) != 0; }

  MachineState& state_;
  Gate& gate_ = state_.gate;
  // Its first value is always the same, so that a rehearsal is.
  std::mt19937_64 generator_{0x51424D61};
};

}  // namespace

std::unique_ptr<RandomSource> MakeRandomSource(MachineState& state) {
  return std::make_unique<MachineRandomSource>(state);
}

}  // namespace qb::machine

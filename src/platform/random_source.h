// The cryptographic random source.
#pragma once

#include <optional>

#include "platform/types.h"

namespace qb {

inline constexpr char kEnhancedProvider[] = "Microsoft Enhanced Cryptographic Provider v1.0";
inline constexpr std::uint32_t kProviderRsaFull = 1;               // PROV_RSA_FULL
inline constexpr std::uint32_t kCryptVerifyContext = 0xF0000000U;  // no keys are kept

class RandomSource {
 public:
  virtual ~RandomSource() = default;

  virtual Result<CryptContext> CryptAcquireContextA(std::optional<std::string_view> container,
                                                    std::optional<std::string_view> provider, std::uint32_t type,
                                                    std::uint32_t flags) = 0;
  // Fills the whole buffer.
  virtual Error CryptGenRandom(CryptContext context, Buffer buffer) = 0;
  virtual Error CryptReleaseContext(CryptContext context, std::uint32_t flags) = 0;
};

}  // namespace qb

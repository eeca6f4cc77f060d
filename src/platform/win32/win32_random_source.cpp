// The cryptographic random source of Windows.
#include "platform/win32/convert.h"
#include "platform/win32/factories.h"

// After the basic types of windows.h.
#include <wincrypt.h>

namespace qb::win32 {
namespace {

class Win32RandomSource final : public RandomSource {
 public:
  explicit Win32RandomSource(Win32Messages& messages) : messages_(messages) {}

  Result<CryptContext> CryptAcquireContextA(std::optional<std::string_view> container,
                                            std::optional<std::string_view> provider, std::uint32_t type,
                                            std::uint32_t flags) override {
    messages_.AnswerWhenDue();  // a provider may be loaded for each context
    HCRYPTPROV context = 0;
    if (!::CryptAcquireContextW(&context, WideText(container).get(), WideText(provider).get(), type, flags)) {
      return LastError();
    }
    return static_cast<CryptContext>(context);
  }
  Error CryptGenRandom(CryptContext context, Buffer buffer) override {
    return FromBool(
        ::CryptGenRandom(static_cast<HCRYPTPROV>(context), SizeOf(buffer), reinterpret_cast<BYTE*>(buffer.data())));
  }
  Error CryptReleaseContext(CryptContext context, std::uint32_t flags) override {
    return FromBool(::CryptReleaseContext(static_cast<HCRYPTPROV>(context), flags));
  }

 private:
  Win32Messages& messages_;
};

}  // namespace

std::unique_ptr<RandomSource> MakeRandomSource(Win32Messages& messages) {
  return std::make_unique<Win32RandomSource>(messages);
}

}  // namespace qb::win32

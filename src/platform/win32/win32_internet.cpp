// The URL cache and COM, answered by Windows.
#include "platform/win32/convert.h"
#include "platform/win32/factories.h"
#include "platform/win32/system_library.h"
// After the basic types of windows.h.
#include <objbase.h>
#include <oleauto.h>
#include <wininet.h>

namespace qb::win32 {

namespace {

class Win32UrlCache : public UrlCache {
 public:
  CacheCall FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                    std::uint32_t& size) override;
  CacheCall FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) override;
  Error FindCloseUrlCache(std::uint64_t search) override;
  Error DeleteUrlCacheEntryA(std::string_view url) override;
};

class Win32Com : public Com {
 public:
  Result<ComObject> CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                     std::string_view interface_id) override;
  Result<std::uint32_t> DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                     std::uint32_t result_type) override;
};

std::string TextOrNothing(const wchar_t* text) {
  return text == nullptr ? std::string() : Narrow(text);
}

void Convert(const INTERNET_CACHE_ENTRY_INFOW& native, CacheEntryInfo& entry) {
  entry.struct_size = native.dwStructSize;
  entry.source_url = TextOrNothing(native.lpszSourceUrlName);
  entry.local_file = TextOrNothing(native.lpszLocalFileName);
  entry.type = native.CacheEntryType;
  entry.use_count = native.dwUseCount;
  entry.hit_rate = native.dwHitRate;
  entry.size_low = native.dwSizeLow;
  entry.size_high = native.dwSizeHigh;
  entry.last_modified = FromNative(native.LastModifiedTime);
  entry.expires = FromNative(native.ExpireTime);
  entry.last_access = FromNative(native.LastAccessTime);
  entry.last_sync = FromNative(native.LastSyncTime);
  entry.header_info = native.lpHeaderInfo == nullptr
                          ? std::string()
                          : std::string(reinterpret_cast<const char*>(native.lpHeaderInfo), native.dwHeaderInfoSize);
  entry.file_extension = TextOrNothing(native.lpszFileExtension);
}

// Calls with a block of the offered size, or with none, and converts what came into it.
template <typename Call>
CacheCall WithBlock(CacheEntryInfo* entry, std::uint32_t& size, Call call) {
  // The record has pointers in it, so the block is aligned for them.
  std::vector<std::uint64_t> block(entry == nullptr ? 0 : (size + sizeof(INTERNET_CACHE_ENTRY_INFOW)) / 8 + 1);
  auto* native = entry == nullptr ? nullptr : reinterpret_cast<INTERNET_CACHE_ENTRY_INFOW*>(block.data());
  DWORD native_size = size;
  if (native != nullptr) native->dwStructSize = native_size;
  ::SetLastError(ERROR_SUCCESS);
  CacheCall outcome;
  outcome.result = call(native, &native_size);
  outcome.last_error = outcome.result != 0 ? Error::Success : LastError();
  size = native_size;
  if (outcome.result != 0 && native != nullptr) Convert(*native, *entry);
  return outcome;
}

// Looked up, so that the import table does not name it: wininet.dll is no known DLL on every Windows.
template <typename Function>
Function FromWininet(const char* name) {
  return FromSystemLibrary<Function>(L"wininet.dll", name);
}

}  // namespace

CacheCall Win32UrlCache::FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                                 std::uint32_t& size) {
  // Windows ignores a pattern that names none of its containers; other systems that offer this call find
  // nothing then, so it is left out here.
  const WideText text(pattern == "cookie:" || pattern == "visited:" ? pattern : std::nullopt);
  const auto find = FromWininet<decltype(&::FindFirstUrlCacheEntryW)>("FindFirstUrlCacheEntryW");
  return WithBlock(entry, size, [&](INTERNET_CACHE_ENTRY_INFOW* native, DWORD* native_size) {
    HANDLE search = find == nullptr ? nullptr : find(text.get(), native, native_size);
    return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(search));
  });
}

CacheCall Win32UrlCache::FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) {
  const auto next = FromWininet<decltype(&::FindNextUrlCacheEntryW)>("FindNextUrlCacheEntryW");
  return WithBlock(entry, size, [&](INTERNET_CACHE_ENTRY_INFOW* native, DWORD* native_size) {
    HANDLE handle = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(search));
    return static_cast<std::uint64_t>(next == nullptr ? FALSE : next(handle, native, native_size));
  });
}

Error Win32UrlCache::FindCloseUrlCache(std::uint64_t search) {
  const auto close = FromWininet<decltype(&::FindCloseUrlCache)>("FindCloseUrlCache");
  if (close == nullptr) return LastError();
  return FromBool(close(reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(search))));
}

Error Win32UrlCache::DeleteUrlCacheEntryA(std::string_view url) {
  const auto remove = FromWininet<decltype(&::DeleteUrlCacheEntryW)>("DeleteUrlCacheEntryW");
  if (remove == nullptr) return LastError();
  auto name = NativeText(url);
  return name.ok() ? FromBool(remove(name.value.c_str())) : name.error;
}

Result<ComObject> Win32Com::CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                             std::string_view interface_id) {
  CLSID native_class{};
  IID native_interface{};
  HRESULT result = ::CLSIDFromString(Wide(class_id).c_str(), &native_class);
  if (SUCCEEDED(result)) result = ::IIDFromString(Wide(interface_id).c_str(), &native_interface);
  void* object = nullptr;
  if (SUCCEEDED(result)) result = ::CoCreateInstance(native_class, nullptr, context, native_interface, &object);
  if (FAILED(result)) return static_cast<Error>(result);
  return Wrap<ComObject>(object);
}

Result<std::uint32_t> Win32Com::DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                             std::uint32_t result_type) {
  constexpr std::uint32_t kEntry = 4;  // bytes of an entry of the table that the offset is meant for
  VARIANT returned;
  ::VariantInit(&returned);
  const HRESULT result = ::DispCallFunc(Unwrap<void*>(object), static_cast<ULONG_PTR>(offset / kEntry) * sizeof(void*),
                                        static_cast<CALLCONV>(convention), static_cast<VARTYPE>(result_type), 0,
                                        nullptr, nullptr, &returned);
  if (FAILED(result)) return static_cast<Error>(result);
  return static_cast<std::uint32_t>(returned.lVal);
}

std::unique_ptr<UrlCache> MakeUrlCache() {
  return std::make_unique<Win32UrlCache>();
}

std::unique_ptr<Com> MakeCom() {
  return std::make_unique<Win32Com>();
}

}  // namespace qb::win32

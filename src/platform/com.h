// COM objects that are called by their place in the interface's table, without a type library.
#pragma once

#include "platform/types.h"

namespace qb {

enum class ComObject : std::uint64_t { None = 0 };

// Calling convention and result type of DispCallFunc.
inline constexpr std::uint32_t kCallStdcall = 4;  // CC_STDCALL
inline constexpr std::uint32_t kResultLong = 3;   // VT_I4

class Com {
 public:
  virtual ~Com() = default;

  // Class and interface as "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}". The error is the HRESULT.
  virtual Result<ComObject> CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                             std::string_view interface_id) = 0;
  // Calls the method without arguments that stands at this byte offset of a table of 4-byte entries; on a
  // system with wider ones the same entry is meant. Gives what the method returns. Release at offset 8
  // ends the object.
  virtual Result<std::uint32_t> DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                             std::uint32_t result_type) = 0;
};

}  // namespace qb

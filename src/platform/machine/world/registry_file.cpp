// The registry in the text form that Windows itself exports and imports.
#include <array>
#include <charconv>
#include <cstdio>

#include "platform/machine/world/names.h"
#include "platform/machine/world/registry_tree.h"
#include "platform/registry.h"
#include "runtime/text.h"

namespace qb::machine {

namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";

// A quoted text at the front; false if it does not end. Wine writes the ends of lines in it as \n and \r, Windows as
// they are; no backslash of the text itself stands alone.
bool TakeQuoted(std::string_view& text, std::string& value) {
  if (text.empty() || text.front() != '"') return false;
  value.clear();
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) {
      const char c = text[++i];
      value += c == 'n' ? '\n' : c == 'r' ? '\r' : c;
    } else if (text[i] == '"') {
      text.remove_prefix(i + 1);
      return true;
    } else {
      value += text[i];
    }
  }
  return false;
}

bool ReadHexBytes(std::string_view text, std::string& bytes) {
  bytes.clear();
  if (Trimmed(text).empty()) return true;
  for (;;) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const std::string_view digits = Trimmed(text.substr(0, comma));
    unsigned byte = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.size() > 2) return false;
    bytes += static_cast<char>(byte);
    if (comma == text.size()) return true;
    text.remove_prefix(comma + 1);
  }
}

bool IsText(std::uint32_t type) {
  return type == kRegSz || type == kRegExpandSz;
}

// What stands behind "name=": false if it cannot be read.
bool ReadData(std::string_view text, RegKey::Value& value) {
  if (text.substr(0, 1) == "\"") {
    value.type = kRegSz;
    if (!TakeQuoted(text, value.data) || !Trimmed(text).empty()) return false;
    value.data += '\0';
    return true;
  }
  if (text.substr(0, 6) == "dword:") {
    const std::string_view digits = Trimmed(text.substr(6));
    std::uint32_t number = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) return false;
    value.type = kRegDword;
    for (int shift = 0; shift < 32; shift += 8) value.data += static_cast<char>((number >> shift) & 0xFF);
    return true;
  }
  if (text.substr(0, 3) != "hex") return false;
  text.remove_prefix(3);
  value.type = kRegBinary;
  if (!text.empty() && text.front() == '(') {
    const std::size_t close = text.find(')');
    if (close == std::string_view::npos) return false;
    auto [end, error] = std::from_chars(text.data() + 1, text.data() + close, value.type, 16);
    if (error != std::errc() || end != text.data() + close) return false;
    text.remove_prefix(close + 1);
  }
  if (text.empty() || text.front() != ':') return false;
  std::string bytes;
  if (!ReadHexBytes(text.substr(1), bytes)) return false;
  value.data = IsText(value.type) ? FromUtf16Bytes(bytes) : bytes;
  return true;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '\\' || c == '"') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

// True if the quoted form reads back as the same bytes.
bool Plain(const RegKey::Value& value) {
  if (value.type != kRegSz || value.data.empty() || value.data.back() != '\0') return false;
  const std::string_view text(value.data.data(), value.data.size() - 1);
  for (char c : text) {
    if (static_cast<unsigned char>(c) < 0x20) return false;
  }
  // Bytes that are no UTF-8 come back as they are too, but other programs could not read the file.
  return FromUtf16Bytes(ToUtf16Bytes(text)) == text && ToUtf16Bytes(text).find('\xdc') == std::string::npos;
}

std::string HexBytes(std::string_view bytes) {
  std::string text;
  for (unsigned char byte : bytes) {
    std::array<char, 4> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", byte);
    if (!text.empty()) text += ',';
    text += digits.data();
  }
  return text;
}

std::string DataText(const RegKey::Value& value) {
  if (Plain(value)) return Quoted(std::string_view(value.data.data(), value.data.size() - 1));
  if (value.type == kRegDword && value.data.size() == 4) {
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; --i)
      number = number << 8 | static_cast<unsigned char>(value.data[static_cast<std::size_t>(i)]);
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "dword:%08x", number);
    return digits.data();
  }
  if (value.type == kRegBinary) return "hex:" + HexBytes(value.data);
  std::array<char, 16> head{};
  std::snprintf(head.data(), head.size(), "hex(%x):", value.type);
  return head.data() + HexBytes(IsText(value.type) ? ToUtf16Bytes(value.data) : value.data);
}

void WriteKey(const RegKey& key, const std::string& path, std::string& text) {
  text += "\r\n[" + path + "]\r\n";
  for (const RegKey::Value& value : key.values) {
    text += value.name.empty() ? "@" : Quoted(value.name);
    text += '=' + DataText(value) + "\r\n";
  }
  for (const RegKey* sub_key : key.Children()) WriteKey(*sub_key, path + '\\' + sub_key->name, text);
}

// Whether a quoted text is open behind `line`, if one was before it.
bool OpenQuote(std::string_view line, bool open) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\\' && open)
      ++i;
    else if (line[i] == '"')
      open = !open;
  }
  return open;
}

// The next line, with lines that end in a backslash joined to the one before, and those of a text of several lines.
bool TakeLine(std::string_view& text, std::string& line, std::size_t& number) {
  line.clear();
  if (text.empty()) return false;
  bool open = false;
  for (;;) {
    const std::size_t cut = std::min(text.find('\n'), text.size());
    std::string_view one = text.substr(0, cut);
    text.remove_prefix(std::min(cut + 1, text.size()));
    ++number;
    const bool returns = !one.empty() && one.back() == '\r';
    if (returns) one.remove_suffix(1);
    if (line.empty()) one.remove_prefix(std::min(one.find_first_not_of(" \t"), one.size()));
    // A key's name ends with the line that closes its bracket; a text, or a value's name, with its quote.
    const bool key = line.empty() ? one.starts_with('[') : line.front() == '[';
    const bool value = open || (!key && (one.starts_with('"') || one.starts_with('@')));
    const bool opens = key ? !Trimmed(one).ends_with(']') : value && OpenQuote(one, open);
    if (opens && !text.empty()) {
      line.append(one).append(returns ? "\r\n" : "\n");
      open = true;
      continue;
    }
    if (!open) one = Trimmed(one);
    const bool goes_on =
        !opens && !one.empty() && one.back() == '\\' && one.front() != '[' && one.front() != ';' && !text.empty();
    if (!goes_on) {
      line += one;
      return true;
    }
    line += one.substr(0, one.size() - 1);
    open = false;
  }
}

}  // namespace

bool ReadRegistryFile(std::string_view bytes, RegistryTree& tree, std::string& problem) {
  std::string converted;
  if (bytes.substr(0, 2) == "\xff\xfe") {
    converted = FromUtf16Bytes(bytes.substr(2));
    bytes = converted;
  } else if (bytes.substr(0, 3) == "\xef\xbb\xbf") {
    bytes.remove_prefix(3);
  }
  const bool ends_with_line = bytes.ends_with('\n');
  std::string line;
  std::size_t number = 0;
  auto fail = [&](const std::string& what) {
    problem = "line " + std::to_string(number) + ": " + what;
    return false;
  };
  if (!TakeLine(bytes, line, number) || line != kHeader) return fail("this is no registry file of version 5.00");
  RegKey* key = nullptr;
  while (TakeLine(bytes, line, number)) {
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      if (line.back() != ']' || line.size() < 3) return fail("the name of a key does not end");
      const std::string path = line.substr(1, line.size() - 2);
      if (!ValidKeyPath(path)) return fail("a key with a name that cannot be, or too deep");
      const std::size_t cut = std::min(path.find('\\'), path.size());
      if (path.substr(0, 5) != "HKEY_") return fail("a key outside of all roots");
      key = &tree.Make(tree.Root(path.substr(0, cut)), path.substr(cut));
      continue;
    }
    RegKey::Value value;
    std::string_view rest = line;
    if (rest.front() == '@')
      rest.remove_prefix(1);
    else if (!TakeQuoted(rest, value.name))
      return fail("the name of a value does not end");
    if (!ValidValueName(value.name)) return fail("a value with a name that cannot be");
    rest = Trimmed(rest);
    if (key == nullptr || rest.empty() || rest.front() != '=') return fail("a value without a key or without data");
    if (!ReadData(Trimmed(rest.substr(1)), value)) return fail("data that cannot be read");
    // Of a text one sees where it ends; of digits only if the line does.
    const bool cut_off = bytes.empty() && !ends_with_line;
    if (cut_off && rest.back() != '"') return fail("the file ends in the middle of a line");
    if (RegKey::Value* old = key->Find(value.name))
      *old = std::move(value);
    else
      key->values.push_back(std::move(value));
  }
  return true;
}

std::string WriteRegistryFile(const RegistryTree& tree) {
  std::string text(kHeader);
  text += "\r\n";
  for (const auto& root : tree.Roots()) WriteKey(*root, root->name, text);
  return text;
}

}  // namespace qb::machine

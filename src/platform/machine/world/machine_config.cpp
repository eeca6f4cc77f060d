#include "platform/machine/world/machine_config.h"

#include <algorithm>
#include <charconv>

#include "platform/machine/world/ini_text.h"
#include "runtime/text.h"

namespace qb::machine {

namespace {

struct AttributeRow {
  char letter;
  std::uint32_t bit;
};
constexpr AttributeRow kAttributes[] = {{'r', kAttributeReadOnly},
                                        {'h', kAttributeHidden},
                                        {'s', kAttributeSystem},
                                        {'a', kAttributeArchive},
                                        {'d', kAttributeDirectory}};

// Stands between the new name of a pending rename and the folder that it was asked for in.
constexpr char kBar = '|';

bool ReadNumber(std::string_view text, std::uint64_t& number, int base = 10) {
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return error == std::errc() && end == text.data() + text.size();
}

// "12 34" as two numbers.
bool ReadPair(std::string_view text, std::uint64_t& first, std::uint64_t& second) {
  const std::size_t blank = text.find(' ');
  return blank != std::string_view::npos && ReadNumber(text.substr(0, blank), first) &&
         ReadNumber(text.substr(blank + 1), second);
}

bool ReadMachineLine(const std::string& name, const std::string& value, MachineState& state) {
  MachineConfig& config = state.config;
  std::uint64_t first = 0, second = 0;
  if (name == "version") {
    if (!ReadPair(value, first, second)) return false;
    config.major = static_cast<std::uint32_t>(first);
    config.minor = static_cast<std::uint32_t>(second);
  } else if (name == "platform") {
    if (!ReadNumber(value, first)) return false;
    config.platform_id = static_cast<std::uint32_t>(first);
  } else if (name == "clock") {
    if (!ReadNumber(value, state.boot_ticks)) return false;
  } else if (name == "codepage") {
    if (!ReadNumber(value, first) || first > CodePage::kUtf8) return false;
    const auto page = CodePage::Of(static_cast<std::uint32_t>(first));
    if (!page) return false;
    config.code_page = *page;
  } else if (name == "user") {
    config.user = value;
  } else if (name == "windows") {
    config.windows_folder = value;
  } else if (name == "program") {
    config.program_folder = value;
  } else if (name == "temp") {
    config.temp_folder = value;
  } else {
    return false;
  }
  return true;
}

bool ReadLine(const std::string& section, const std::string& name, const std::string& value, MachineState& state,
              SavedEntries& saved) {
  MachineConfig& config = state.config;
  std::uint64_t first = 0, second = 0;
  if (section == "machine") return ReadMachineLine(name, value, state);
  if (section == "folders") {
    const std::size_t blank = std::min(value.find(' '), value.size());
    if (!ReadNumber(name, first) || !ReadNumber(std::string_view(value).substr(0, blank), second, 16)) return false;
    config.special_folders[static_cast<std::uint32_t>(first)] = {
        static_cast<std::uint32_t>(second), blank < value.size() ? value.substr(blank + 1) : std::string()};
    return true;
  }
  if (section == "drives") {
    if (name.size() != 1 || name[0] < 'A' || name[0] > 'Z') return false;
    config.drive_types[name[0]] = value;
    return true;
  }
  if (section == "labels") {
    if (name.size() != 1) return false;
    config.volume_labels[name[0]] = value;
    return true;
  }
  if (section == "outside") {
    if (!ReadPair(value, first, second)) return false;
    config.outside_programs[name] = {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(second)};
    return true;
  }
  if (section == "pending") {
    const std::size_t bar = std::min(value.find(kBar), value.size());
    config.pending.push_back({name, value.substr(0, bar), value.substr(std::min(bar + 1, value.size()))});
    return true;
  }
  if (section == "denied") {
    saved.denied_keys.push_back(name);
    return true;
  }
  std::map<std::string, std::string>* const tables[] = {&config.associations, &config.environment, &saved.attributes,
                                                        &saved.junctions, &saved.short_names};
  constexpr std::string_view kNames[] = {"programs", "environment", "attributes", "junctions", "shortnames"};
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    if (section != kNames[i]) continue;
    (*tables[i])[name] = value;
    return true;
  }
  return false;
}

void CollectEntries(const Disk& disk, const Entry& folder, SavedEntries& saved) {
  for (const auto& [folded, child] : folder.children) {
    const std::string path = disk.PathOf(*child);
    const std::uint32_t usual = child->kind == Entry::Kind::File ? kAttributeArchive : 0;
    if (child->attributes != usual && child->kind != Entry::Kind::HostLink) {
      saved.attributes[path] = AttributeLetters(child->attributes);
    }
    if (child->IsLink()) saved.junctions[path] = child->target;
    if (!child->short_name.empty()) saved.short_names[path] = child->short_name;
    CollectEntries(disk, *child, saved);
  }
}

void CollectDenied(const RegKey& key, const std::string& path, std::vector<std::string>& denied) {
  if (key.denied) denied.push_back(path);
  for (const RegKey* sub_key : key.Children()) CollectDenied(*sub_key, path + "\\" + sub_key->name, denied);
}

IniSection Section(const char* name, const std::map<std::string, std::string>& table) {
  return {name, {table.begin(), table.end()}};
}

}  // namespace

std::uint32_t AttributeBit(char letter) {
  for (const AttributeRow& row : kAttributes) {
    if (row.letter == letter && letter != 'd') return row.bit;
  }
  return 0;
}

std::string AttributeLetters(std::uint32_t attributes) {
  std::string letters;
  for (const AttributeRow& row : kAttributes) {
    if ((attributes & row.bit) != 0) letters += row.letter;
  }
  return letters;
}

bool ReadConfig(std::string_view text, MachineState& state, SavedEntries& saved, std::string& problem) {
  std::vector<IniSection> sections;
  if (!ReadIni(text, sections, problem)) return false;
  for (const IniSection& section : sections) {
    for (const auto& [name, value] : section.lines) {
      if (!ReadLine(section.name, name, value, state, saved)) {
        problem = "[" + section.name + "] " + name + ": this cannot be read";
        return false;
      }
    }
  }
  return true;
}

void GiveBack(const SavedEntries& saved, MachineState& state) {
  auto entry = [&state](const std::string& path) -> Entry* {
    auto parsed = ParsePath(path, ParsedPath(), false);
    if (!parsed.ok()) return nullptr;
    auto found = state.disk.Find(parsed.value);
    return found.ok() ? found.value : nullptr;
  };
  // Short names and attributes first: a junction hides what may lie in its host folder.
  for (const auto& [path, short_name] : saved.short_names) {
    if (Entry* found = entry(path); found != nullptr && found->parent != nullptr) {
      state.disk.SetShortName(*found, short_name);
    }
  }
  for (const auto& [path, letters] : saved.attributes) {
    Entry* found = entry(path);
    if (found == nullptr) continue;
    found->attributes = 0;
    for (char letter : letters) found->attributes |= AttributeBit(letter);
  }
  // All are found before the first becomes one: it would hide those that lie in its host folder.
  std::vector<std::pair<Entry*, std::string_view>> junctions;
  for (const auto& [path, target] : saved.junctions) junctions.emplace_back(entry(path), target);
  for (const auto& [found, target] : junctions) {
    if (found == nullptr || found->kind == Entry::Kind::HostLink) continue;
    found->kind = found->IsFolder() ? Entry::Kind::Junction : Entry::Kind::FileLink;
    found->target = target;
  }
  for (const std::string& key : saved.denied_keys) {
    std::string_view below;
    RegKey* root = state.registry.RootOf(key, below);
    RegKey* found = root == nullptr ? nullptr : state.registry.Find(*root, below);
    if (found != nullptr) found->denied = true;
  }
}

std::string WriteConfig(const MachineState& state) {
  const MachineConfig& config = state.config;
  std::vector<IniSection> sections;
  sections.push_back({"machine",
                      {{"version", std::to_string(config.major) + " " + std::to_string(config.minor)},
                       {"platform", std::to_string(config.platform_id)},
                       {"codepage", std::to_string(config.code_page.number())},
                       {"user", config.user},
                       {"windows", config.windows_folder},
                       {"program", config.program_folder},
                       {"temp", config.temp_folder},
                       {"clock", std::to_string(state.Now().ticks)}}});
  IniSection folders{"folders", {}}, drives{"drives", {}}, labels{"labels", {}}, outside{"outside", {}},
      pending{"pending", {}}, denied{"denied", {}};
  for (const auto& [number, folder] : config.special_folders) {
    std::string result;
    for (std::uint32_t rest = folder.result; rest != 0; rest >>= 4) {
      result.insert(result.begin(), "0123456789abcdef"[rest & 15]);
    }
    folders.lines.emplace_back(std::to_string(number), (result.empty() ? "0" : result) + " " + folder.path);
  }
  for (const auto& [letter, type] : config.drive_types) drives.lines.emplace_back(std::string(1, letter), type);
  for (const auto& [letter, label] : config.volume_labels) labels.lines.emplace_back(std::string(1, letter), label);
  for (const auto& [name, end] : config.outside_programs) {
    outside.lines.emplace_back(name, std::to_string(end.exit_code) + " " + std::to_string(end.pumps));
  }
  for (const PendingRename& rename : config.pending) {
    pending.lines.emplace_back(rename.from, rename.to + kBar + rename.folder);
  }

  SavedEntries saved;
  for (char letter : state.disk.DriveLetters()) CollectEntries(state.disk, *state.disk.Root(letter), saved);
  for (const auto& root : state.registry.Roots()) {
    if (root->name == "HKEY_CURRENT_USER") CollectDenied(*root, "HKCU", saved.denied_keys);
    if (root->name == "HKEY_LOCAL_MACHINE") CollectDenied(*root, "HKLM", saved.denied_keys);
  }
  for (const std::string& key : saved.denied_keys) denied.lines.emplace_back(key, "");

  for (IniSection& section : std::vector<IniSection>{
           folders, drives, labels, Section("programs", config.associations),
           Section("environment", config.environment), outside, pending, denied, Section("junctions", saved.junctions),
           Section("attributes", saved.attributes), Section("shortnames", saved.short_names)}) {
    sections.push_back(std::move(section));
  }
  return WriteIni(sections);
}

bool ReadCache(std::string_view text, UrlCacheEntries& cache, std::string& problem) {
  std::vector<IniSection> sections;
  if (!ReadIni(text, sections, problem)) return false;
  for (const IniSection& section : sections) {
    for (const auto& [url, value] : section.lines) {
      const std::size_t blank = std::min(value.find(' '), value.size());
      std::uint64_t type = 0;
      if (!ReadNumber(std::string_view(value).substr(0, blank), type, 16) || type > 0xFFFFFFFFu) {
        problem = url + ": a type that is no hexadecimal number";
        return false;
      }
      cache.Add(
          {url, static_cast<std::uint32_t>(type), blank < value.size() ? value.substr(blank + 1) : std::string()});
    }
  }
  return true;
}

std::string WriteCache(const UrlCacheEntries& cache) {
  IniSection entries{"entries", {}};
  std::uint64_t place = 0;
  while (const CacheEntry* entry = cache.After(place)) {
    std::string type;
    for (std::uint32_t rest = entry->type; rest != 0; rest >>= 4) {
      type.insert(type.begin(), "0123456789abcdef"[rest & 15]);
    }
    entries.lines.emplace_back(entry->url, (type.empty() ? "0" : type) + " " + entry->local_file);
  }
  return WriteIni({entries});
}

}  // namespace qb::machine

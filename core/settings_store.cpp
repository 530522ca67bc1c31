#include "core/settings_store.h"

namespace kp {

std::string SettingsStore::SetMany(const std::string& section,
                                   const std::vector<std::pair<std::string, std::string>>& values) {
  for (const auto& [key, value] : values)
    if (std::string err = Set(section, key, value); !err.empty()) return err;
  return "";
}

std::optional<std::string> MemorySettings::Get(const std::string& section, const std::string& key) {
  auto s = data.find(section);
  if (s == data.end()) return std::nullopt;
  auto k = s->second.find(key);
  if (k == s->second.end()) return std::nullopt;
  return k->second;
}

std::string MemorySettings::Set(const std::string& section, const std::string& key,
                                const std::string& value) {
  if (failWrites) return "Access is denied.";
  data[section][key] = value;
  return "";
}

std::string MemorySettings::RemoveSection(const std::string& section) {
  if (failDeletes) return "Access is denied.";
  const std::string below = section + "/";
  for (auto it = data.begin(); it != data.end();) {
    if (it->first == section || it->first.compare(0, below.size(), below) == 0)
      it = data.erase(it);
    else
      ++it;
  }
  return "";
}

}  // namespace kp

#include "core/settings_store.h"

namespace kp {

std::string SettingsStore::SetMany(const std::string& section,
                                   const std::vector<std::pair<std::string, std::string>>& values) {
  BeginBatch();
  for (const auto& [key, value] : values)
    if (std::string err = Set(section, key, value); !err.empty()) {
      EndBatch();
      return err;
    }
  return EndBatch();
}

std::string SettingsStore::EndBatch() {
  if (batchDepth_ == 0 || --batchDepth_ > 0) return "";
  return Flush();
}

std::string SettingsStore::Flush() {
  if (!pending_) return "";
  pending_ = false;
  ++writes_;
  return Persist();
}

std::string SettingsStore::Changed() {
  pending_ = true;
  if (batchDepth_ > 0 || Defer()) return "";
  return Flush();
}

void SettingsStore::Hold(const std::string& section, const std::string& key,
                         const std::string& value) {
  held_[{section, key}] = value;
}

void SettingsStore::Release(const std::string& section, const std::string& key) {
  held_.erase({section, key});
}

std::optional<std::string> SettingsStore::Held(const std::string& section,
                                               const std::string& key) const {
  auto it = held_.find({section, key});
  if (it == held_.end()) return std::nullopt;
  return it->second;
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
  return Changed();
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
  return Changed();
}

}  // namespace kp

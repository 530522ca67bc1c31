// The per-user settings store: (section, key) -> text. Sections are paths
// joined by "/", such as "2.02/Params"; the application name is the store's
// own. Failures are returned as text, never thrown.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kp {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  // The value, or nullopt when the key is absent.
  virtual std::optional<std::string> Get(const std::string& section, const std::string& key) = 0;
  // "" on success, otherwise the failure's text.
  virtual std::string Set(const std::string& section, const std::string& key,
                          const std::string& value) = 0;
  // Several keys of one section as one change: a store kept in a file
  // writes them in one write, so that no run ends between them. "" on
  // success, otherwise the failure's text.
  virtual std::string SetMany(const std::string& section,
                              const std::vector<std::pair<std::string, std::string>>& values);
  // Deletes the section with every key and every section below it.
  // "" on success, otherwise the failure's text.
  virtual std::string RemoveSection(const std::string& section) = 0;
};

// An in-memory store for tests and headless runs. Writes and deletes can be
// made to fail to exercise the failure paths.
class MemorySettings : public SettingsStore {
 public:
  std::optional<std::string> Get(const std::string& section, const std::string& key) override;
  std::string Set(const std::string& section, const std::string& key,
                  const std::string& value) override;
  std::string RemoveSection(const std::string& section) override;

  bool failWrites = false;
  bool failDeletes = false;
  // section -> key -> value
  std::map<std::string, std::map<std::string, std::string>> data;
};

}  // namespace kp

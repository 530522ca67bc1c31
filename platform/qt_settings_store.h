// The per-user settings store on top of QSettings. Sections become groups
// ("2.02/Params" is the group 2.02, subgroup Params); values are kept as
// bytes, one character per byte, so any byte survives a round trip.
#pragma once

#include <QSettings>
#include <memory>

#include "core/settings_store.h"

namespace kp {

class QtSettingsStore : public SettingsStore {
 public:
  // The native per-user store of the application "KestrelPane".
  QtSettingsStore();
  // An INI file, created (with its folder) when missing.
  explicit QtSettingsStore(const std::string& iniPath);

  std::optional<std::string> Get(const std::string& section, const std::string& key) override;
  std::string Set(const std::string& section, const std::string& key,
                  const std::string& value) override;
  std::string SetMany(const std::string& section,
                      const std::vector<std::pair<std::string, std::string>>& values) override;
  std::string RemoveSection(const std::string& section) override;

  // The file behind the store (the native one or the INI file).
  std::string FileName() const;

 private:
  std::string Sync();
  std::unique_ptr<QSettings> settings_;
};

}  // namespace kp

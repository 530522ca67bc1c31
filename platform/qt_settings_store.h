// The per-user settings store on top of QSettings. Sections become groups
// ("2.02/Params" is the group 2.02, subgroup Params); values are kept as
// bytes, one character per byte, so any byte survives a round trip.
#pragma once

#include <QSettings>
#include <QTimer>
#include <memory>

#include "core/settings_store.h"

namespace kp {

class QtSettingsStore : public SettingsStore {
 public:
  // The native per-user store of the application "KestrelPane".
  QtSettingsStore();
  // An INI file, created (with its folder) when missing.
  explicit QtSettingsStore(const std::string& iniPath);
  // What is still pending is written.
  ~QtSettingsStore() override;

  std::optional<std::string> Get(const std::string& section, const std::string& key) override;
  std::string Set(const std::string& section, const std::string& key,
                  const std::string& value) override;
  std::string SetMany(const std::string& section,
                      const std::vector<std::pair<std::string, std::string>>& values) override;
  std::string RemoveSection(const std::string& section) override;
  std::string Where() const override;
  std::string ReadProblem() const override { return readProblem_; }

  // The file behind the store (the native one or the INI file).
  std::string FileName() const;

 private:
  void CheckReadable();
  // Why the file must not be written now; "" when it may.
  std::string WriteRefusal() const;
  std::string Sync();
  std::string Persist() override { return Sync(); }
  bool Defer() override;
  void KeepWritesToItself();
  std::unique_ptr<QSettings> settings_;
  // Writes a change made outside a batch once the current event is done.
  std::unique_ptr<QTimer> flushTimer_;
  // A file that could not be read is never written: its text may be
  // something else the user keeps (a project named by mistake), and
  // QSettings would write its garbled reading over it. The run keeps its
  // settings here instead.
  std::string readProblem_;
  std::unique_ptr<MemorySettings> memory_;
};

}  // namespace kp

// The per-user settings store: (section, key) -> text. Sections are paths
// joined by "/", such as "2.02/Params"; the application name is the store's
// own. Failures are returned as text, never thrown.
#pragma once

#include <functional>
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

  // Where the settings are kept, as a message names it.
  virtual std::string Where() const { return "the settings store"; }
  // Why the stored settings could not be read at all ("" when they could).
  // Such a store starts empty, keeps its changes in memory until the
  // program ends and leaves what it could not read as it is.
  virtual std::string ReadProblem() const { return ""; }

  // Values held for this run only, in front of the stored ones: what could
  // not be written (a damaged record's replacement, a copied button) still
  // applies until the program ends. The store routines read them first.
  void Hold(const std::string& section, const std::string& key, const std::string& value);
  void Release(const std::string& section, const std::string& key);
  std::optional<std::string> Held(const std::string& section, const std::string& key) const;

  // One operation's changes as one write of the store: batches nest, and
  // the outermost EndBatch writes what changed. A change outside a batch
  // is written at once, or, by a store that can (Defer), when the current
  // event is done. "" on success, otherwise the failure's text.
  void BeginBatch() { ++batchDepth_; }
  std::string EndBatch();
  bool InBatch() const { return batchDepth_ > 0; }
  // Writes what is still pending; at exit and before the process ends.
  std::string Flush();
  // How many times the changes were written out.
  int Writes() const { return writes_; }
  // Told when a write that nobody waits for fails (the end of a batch
  // left by a destructor, a deferred write).
  std::function<void(const std::string&)> onWriteFailure;

 protected:
  // Each change ends here.
  std::string Changed();
  // Writes the changes out; "" on success.
  virtual std::string Persist() { return ""; }
  // Arranges a Flush once the current event is done; false when the store
  // cannot, and the change is written at once.
  virtual bool Defer() { return false; }

 private:
  std::map<std::pair<std::string, std::string>, std::string> held_;
  int batchDepth_ = 0;
  bool pending_ = false;
  int writes_ = 0;
};

// A batch over a scope: the operation's changes are written once, when it
// ends.
class SettingsBatch {
 public:
  explicit SettingsBatch(SettingsStore& store) : store_(store) { store_.BeginBatch(); }
  ~SettingsBatch() {
    const std::string failure = store_.EndBatch();
    if (!failure.empty() && store_.onWriteFailure) store_.onWriteFailure(failure);
  }
  SettingsBatch(const SettingsBatch&) = delete;
  SettingsBatch& operator=(const SettingsBatch&) = delete;

 private:
  SettingsStore& store_;
};

// An in-memory store for tests and headless runs. Writes and deletes can be
// made to fail to exercise the failure paths.
class MemorySettings : public SettingsStore {
 public:
  std::optional<std::string> Get(const std::string& section, const std::string& key) override;
  std::string Set(const std::string& section, const std::string& key,
                  const std::string& value) override;
  std::string RemoveSection(const std::string& section) override;
  std::string Where() const override { return where; }
  std::string ReadProblem() const override { return readProblem; }

  bool failWrites = false;
  bool failDeletes = false;
  std::string where = "the settings in memory";
  std::string readProblem;
  // section -> key -> value
  std::map<std::string, std::map<std::string, std::string>> data;
};

}  // namespace kp

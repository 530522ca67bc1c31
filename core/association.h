// The ".kpn" file association. On this desktop it is a shared-MIME-info
// package that names the type and its "*.kpn" glob, and a desktop entry
// that opens such files with this program; xdg-mime makes the entry the
// type's default. The check compares exactly what the registration writes.
#pragma once

#include <string>
#include <vector>

#include "core/env.h"

namespace kp {

inline constexpr const char* kProjectMimeType = "application/x-kestrelpane-project";
inline constexpr const char* kProjectTypeName = "Kestrel Pane Project";
inline constexpr const char* kDesktopFileName = "kestrelpane.desktop";
inline constexpr const char* kMimePackageName = "kestrelpane.xml";

class FileAssociation {
 public:
  virtual ~FileAssociation() = default;
  // True when the association is not in place and should be offered.
  virtual bool AssociationMissing(Env& env) = 0;
  // Writes the association. A write that fails shows the store's failure
  // box; returns false then.
  virtual bool RegisterAssociation(Env& env) = 0;
};

class XdgAssociation : public FileAssociation {
 public:
  // dataHome: the user's data folder ($XDG_DATA_HOME, or ~/.local/share);
  // exePath: the program file that opens the projects.
  // systemDataDirs: the system's data folders ($XDG_DATA_DIRS), where a
  // package puts its entry for all users; such an entry counts as the
  // association when it runs this program from the same prefix.
  XdgAssociation(std::string dataHome, std::string exePath,
                 std::vector<std::string> systemDataDirs = {})
      : dataHome_(std::move(dataHome)),
        exePath_(std::move(exePath)),
        systemDataDirs_(std::move(systemDataDirs)) {}

  bool AssociationMissing(Env& env) override;
  bool RegisterAssociation(Env& env) override;

  std::string DesktopFilePath() const;
  std::string MimePackagePath() const;
  // The two files' contents as the registration writes them.
  std::string DesktopFileText() const;
  std::string MimePackageText() const;
  // The values that the check compares.
  std::string IconValue() const { return exePath_; }
  std::string ExecValue() const { return "\"" + exePath_ + "\" %f"; }

 private:
  // The entry of a package installed with the same prefix as exePath_.
  bool InstalledFor(Env& env, const std::string& dataDir) const;

  std::string dataHome_;
  std::string exePath_;
  std::vector<std::string> systemDataDirs_;
};

// The folders of an $XDG_DATA_DIRS value; the desktop's usual default
// when it is empty. No trailing separators; relative entries are dropped.
std::vector<std::string> DataDirsFrom(const std::string& xdgDataDirs);

// The value of `key` in the "[Desktop Entry]" group of a desktop file's
// text; empty when absent.
std::string DesktopEntryValue(const std::string& text, const std::string& key);

}  // namespace kp

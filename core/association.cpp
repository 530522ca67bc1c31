#include "core/association.h"

#include "core/conv.h"
#include "core/language.h"
#include "core/launcher.h"
#include "core/messages.h"
#include "core/prompter.h"

namespace kp {

namespace {

// The part of the MIME package that describes our type, "" when absent.
std::string MimeTypeBlock(const std::string& xml) {
  const std::string open = std::string("<mime-type type=\"") + kProjectMimeType + "\">";
  size_t b = xml.find(open);
  if (b == std::string::npos) return "";
  size_t e = xml.find("</mime-type>", b);
  return e == std::string::npos ? "" : xml.substr(b, e - b);
}

}  // namespace

std::string DesktopEntryValue(const std::string& text, const std::string& key) {
  bool inEntry = false;
  for (const std::string& line : TextLines(text)) {
    if (!line.empty() && line.front() == '[') {
      inEntry = line == "[Desktop Entry]";
      continue;
    }
    if (inEntry && line.size() > key.size() && line.compare(0, key.size(), key) == 0 &&
        line[key.size()] == '=')
      return line.substr(key.size() + 1);
  }
  return "";
}

std::string XdgAssociation::DesktopFilePath() const {
  return dataHome_ + "/applications/" + kDesktopFileName;
}

std::string XdgAssociation::MimePackagePath() const {
  return dataHome_ + "/mime/packages/" + kMimePackageName;
}

std::string XdgAssociation::DesktopFileText() const {
  return std::string("[Desktop Entry]\n") + "Type=Application\n" + "Name=Kestrel Pane\n" +
         "Comment=Designer of button bars for web pages\n" + "Exec=" + ExecValue() + "\n" +
         "Icon=" + IconValue() + "\n" + "MimeType=" + kProjectMimeType + ";\n" +
         "Terminal=false\n" + "Categories=Development;WebDevelopment;\n";
}

std::string XdgAssociation::MimePackageText() const {
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") +
         "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n" +
         "  <mime-type type=\"" + kProjectMimeType + "\">\n" + "    <comment>" +
         kProjectTypeName + "</comment>\n" + "    <glob pattern=\"*.kpn\"/>\n" +
         "  </mime-type>\n" + "</mime-info>\n";
}

std::vector<std::string> DataDirsFrom(const std::string& xdgDataDirs) {
  const std::string value = xdgDataDirs.empty() ? "/usr/local/share/:/usr/share/" : xdgDataDirs;
  std::vector<std::string> dirs;
  size_t start = 0;
  while (start <= value.size()) {
    size_t colon = value.find(':', start);
    if (colon == std::string::npos) colon = value.size();
    std::string d = value.substr(start, colon - start);
    while (d.size() > 1 && d.back() == '/') d.pop_back();
    if (!d.empty() && d.front() == '/') dirs.push_back(d);
    start = colon + 1;
  }
  return dirs;
}

bool XdgAssociation::InstalledFor(Env& env, const std::string& dataDir) const {
  // A package's entry names the program by its name alone, found on the
  // PATH; it is ours when the program lies in the bin folder beside the
  // data folder, as /usr/bin/kestrelpane beside /usr/share.
  const size_t slash = exePath_.rfind('/');
  if (slash == std::string::npos) return false;
  const std::string name = exePath_.substr(slash + 1);
  const std::string binDir = exePath_.substr(0, slash);
  const size_t prefixEnd = binDir.rfind('/');
  if (prefixEnd == std::string::npos || binDir.substr(prefixEnd) != "/bin") return false;
  if (dataDir != binDir.substr(0, prefixEnd) + "/share") return false;
  std::string xml, desktop;
  if (!env.fs.ReadFile(dataDir + "/mime/packages/" + kMimePackageName, xml)) return false;
  const std::string block = MimeTypeBlock(xml);
  if (block.find("<glob pattern=\"*.kpn\"/>") == std::string::npos) return false;
  if (!env.fs.ReadFile(dataDir + "/applications/" + kDesktopFileName, desktop)) return false;
  const std::string exec = DesktopEntryValue(desktop, "Exec");
  return DesktopEntryValue(desktop, "Icon") == name &&
         (exec == name + " %f" || exec == name + " %F") &&
         DesktopEntryValue(desktop, "MimeType").find(kProjectMimeType) != std::string::npos;
}

bool XdgAssociation::AssociationMissing(Env& env) {
  for (const std::string& dir : systemDataDirs_)
    if (InstalledFor(env, dir)) return false;
  std::string xml, desktop;
  if (!env.fs.ReadFile(MimePackagePath(), xml)) return true;
  const std::string block = MimeTypeBlock(xml);
  // ".kpn" names our type, and the type is called by the program's name.
  if (block.find("<glob pattern=\"*.kpn\"/>") == std::string::npos) return true;
  if (block.find(std::string("<comment>") + kProjectTypeName + "</comment>") == std::string::npos)
    return true;
  if (!env.fs.ReadFile(DesktopFilePath(), desktop)) return true;
  // The icon and the open command compare without regard to case.
  if (LCase(DesktopEntryValue(desktop, "Icon")) != LCase(IconValue())) return true;
  if (LCase(DesktopEntryValue(desktop, "Exec")) != LCase(ExecValue())) return true;
  return false;
}

bool XdgAssociation::RegisterAssociation(Env& env) {
  MakeLongDir(env, dataHome_ + "/mime/packages");
  MakeLongDir(env, dataHome_ + "/applications");
  if (!env.fs.WriteFileAtomic(MimePackagePath(), MimePackageText()) ||
      !env.fs.WriteFileAtomic(DesktopFilePath(), DesktopFileText())) {
    env.prompter.MsgBox(SharedText("sWriteValueFailed"), Buttons::OK, "fWriteValue",
                        Icon::Critical);
    return false;
  }
  // The databases are the desktop's business: when its tools are missing
  // the files still say everything, so a failure here is not reported.
  if (env.launcher) {
    env.launcher->Run("update-mime-database", {dataHome_ + "/mime"}, false);
    env.launcher->Run("xdg-mime", {"default", kDesktopFileName, kProjectMimeType}, false);
  }
  return true;
}

}  // namespace kp

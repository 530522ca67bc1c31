#include "core/association.h"

#include "core/conv.h"
#include "core/language.h"
#include "core/launcher.h"
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

bool XdgAssociation::AssociationMissing(Env& env) {
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
    env.prompter.MsgBox("Unable to write registry or .ini file value.", Buttons::OK, "fWriteValue",
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

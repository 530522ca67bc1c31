#include "generate/js_caller.h"

#include "core/conv.h"
#include "core/folders.h"

namespace kp {
namespace {

// The next line of `text` from `pos`, without its end (CR LF, LF or CR);
// advances `pos` past the end. A last line without an end is still a line.
std::string_view NextLine(std::string_view text, size_t& pos) {
  size_t start = pos;
  size_t end = text.find_first_of("\r\n", start);
  if (end == std::string_view::npos) {
    pos = text.size();
    return text.substr(start);
  }
  pos = end + 1;
  if (text[end] == '\r' && pos < text.size() && text[pos] == '\n') ++pos;
  return text.substr(start, end - start);
}

}  // namespace

std::string JSCallerFromText(std::string_view iniText, const std::string& appletName) {
  std::string result;
  bool inBlock = false;
  size_t pos = 0;
  while (pos < iniText.size()) {
    std::string_view line = NextLine(iniText, pos);
    std::string upper = UCase(line);
    if (upper == "[END OF JSCALLER]") break;
    if (inBlock) {
      result += sCRLF;
      result += ReplaceAll(line, "AppletName", appletName);
    }
    if (upper == "[JSCALLER]") inBlock = true;
  }
  return result;
}

std::string GetJSCaller(Env& env, const std::string& appletName) {
  std::string text;
  if (!env.fs.ReadFile(ProgramFile(env, "Kestrel.ini"), text)) return "";
  return JSCallerFromText(text, appletName);
}

void FixBodyTag(Project& p, bool bUseJSCaller) {
  if (bUseJSCaller) {
    p.sHTMLbefore = ReplaceAll(p.sHTMLbefore, "<body>", kCallerBody, true);
  } else {
    p.sHTMLbefore = ReplaceAll(p.sHTMLbefore, kOnloadAttribute, "", true);
  }
}

}  // namespace kp

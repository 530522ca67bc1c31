#include "publish/player.h"

#include "core/conv.h"
#include "core/settings.h"
#include "generate/html_generator.h"

namespace kp {

namespace {

bool IsBlank(char ch) { return ch == ' ' || ch == '\t' || ch == '\r' || ch == '\n' || ch == '\f'; }

// The value of the src attribute of one tag's text (already lower case),
// "" when it has none.
std::string SrcOf(const std::string& tag) {
  for (size_t at = tag.find("src"); at != std::string::npos; at = tag.find("src", at + 1)) {
    // "data-src" or "xsrc" are other attributes.
    if (at == 0 || !IsBlank(tag[at - 1])) continue;
    size_t k = at + 3;
    while (k < tag.size() && IsBlank(tag[k])) ++k;
    if (k >= tag.size() || tag[k] != '=') continue;
    ++k;
    while (k < tag.size() && IsBlank(tag[k])) ++k;
    if (k >= tag.size()) return "";
    if (tag[k] == '"' || tag[k] == '\'') {
      const size_t end = tag.find(tag[k], k + 1);
      return tag.substr(k + 1, end == std::string::npos ? std::string::npos : end - k - 1);
    }
    size_t end = k;
    while (end < tag.size() && !IsBlank(tag[end]) && tag[end] != '>') ++end;
    return tag.substr(k, end - k);
  }
  return "";
}

// The end of the line that holds `pos`, past its line end; npos when the
// text ends on that line.
size_t PastLineEnd(const std::string& text, size_t pos) {
  const size_t lf = text.find('\n', pos);
  return lf == std::string::npos ? std::string::npos : lf + 1;
}

}  // namespace

bool PlayerScriptSetting(Env& env) { return TextToBool(GetParam(env, kAddPlayerScriptKey)); }

void SetPlayerScriptSetting(Env& env, bool on) {
  SetParam(env, kAddPlayerScriptKey, BoolToText(on));
}

bool PlayerWanted(PublishContext& c) {
  return !c.state.bWithoutPlayer && PlayerScriptSetting(c.env);
}

std::string PlayerScriptSrc(const std::string& codeBase) {
  std::string base = ReplaceAll(codeBase, "\\", "/");
  // A quote would end the attribute early.
  base = ReplaceAll(base, "\"", "%22");
  const bool root = !base.empty() && base.find_first_not_of('/') == std::string::npos;
  while (!base.empty() && base.back() == '/') base.pop_back();
  if (root) return std::string("/") + kPlayerFile;
  return base.empty() ? std::string(kPlayerFile) : base + "/" + kPlayerFile;
}

std::string PlayerScriptElement(const std::string& codeBase) {
  return "<script type=\"text/javascript\" src=\"" + PlayerScriptSrc(codeBase) + "\"></script>";
}

bool HasPlayerScript(const std::string& pageText) {
  const std::string lower = LCase(pageText);
  const std::string file = LCase(kPlayerFile);
  for (size_t a = lower.find("<script"); a != std::string::npos; a = lower.find("<script", a + 1)) {
    const size_t gt = lower.find('>', a);
    const std::string tag = lower.substr(a, gt == std::string::npos ? std::string::npos : gt - a);
    const std::string src = SrcOf(tag);
    if (src == file || EndsWith(src, "/" + file)) return true;
  }
  return false;
}

std::string WithPlayerScript(const std::string& pageText, const std::string& codeBase) {
  if (HasPlayerScript(pageText)) return pageText;

  size_t after = std::string::npos;
  if (size_t end = pageText.rfind(kEndComment); end != std::string::npos) {
    after = end + std::string(kEndComment).size();
  } else {
    // A page pasted by hand may lack the comments, and may spell the tag in
    // capitals.
    const std::string lower = LCase(pageText);
    if (size_t close = lower.rfind("</applet>"); close != std::string::npos)
      after = close + std::string("</applet>").size();
  }
  if (after == std::string::npos) return pageText;

  const std::string element = PlayerScriptElement(codeBase);
  const size_t lineEnd = PastLineEnd(pageText, after);
  // Only blanks between the anchor and its line end: the element takes the
  // next line, ending as that line ends.
  if (lineEnd != std::string::npos && pageText.find_first_not_of(" \t\r", after) == lineEnd - 1) {
    const bool crlf = lineEnd >= 2 && pageText[lineEnd - 2] == '\r';
    return pageText.substr(0, lineEnd) + element + (crlf ? sCRLF : "\n") + pageText.substr(lineEnd);
  }
  // More text on the anchor's line, or none at all after it.
  std::string out = pageText.substr(0, after) + sCRLF + element;
  if (after < pageText.size()) out += sCRLF;
  out += pageText.substr(after);
  return out;
}

}  // namespace kp

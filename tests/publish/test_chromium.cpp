// The sample project built into a folder and opened in a real browser:
// every picture and sound the page names must load from the built folder.
// Browsers no longer run applets, so they never fetch the applet's
// parameter files themselves: a checker page beside the built page loads
// each named file by its URL relative to the page, as the applet would.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "core/conv.h"
#include "project/project_file.h"
#include "publish/build.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::TempDir;

const char* const kChromium = "/usr/bin/chromium";

bool IsMediaName(const std::string& name) {
  for (const char* ext : {".gif", ".jpg", ".jpeg", ".au"})
    if (EndsWith(name, ext, true)) return true;
  return false;
}

// What the page tells the applet: its code base, picture and sound folders
// and every picture and sound file name in its parameters.
struct PageMedia {
  std::string codeBase;
  std::string imgPath;
  std::string sndPath;
  std::set<std::string> pictures;
  std::set<std::string> sounds;
};

std::string AttributeValue(const std::string& text, const std::string& attr, size_t from) {
  size_t at = text.find(attr + "=\"", from);
  if (at == std::string::npos) return "";
  at += attr.size() + 2;
  return text.substr(at, text.find('"', at) - at);
}

PageMedia DecodePage(const std::string& page) {
  PageMedia m;
  size_t applet = page.find("<applet ");
  m.codeBase = AttributeValue(page, "codebase", applet);
  for (size_t at = page.find("<Param Name=\""); at != std::string::npos;
       at = page.find("<Param Name=\"", at + 1)) {
    const size_t nameAt = at + std::string("<Param Name=\"").size();
    const std::string name = page.substr(nameAt, page.find('"', nameAt) - nameAt);
    const std::string value = AttributeValue(page, "value", at);
    std::vector<std::string> fields;
    for (size_t start = 0;;) {
      size_t bar = value.find('|', start);
      fields.push_back(
          value.substr(start, bar == std::string::npos ? std::string::npos : bar - start));
      if (bar == std::string::npos) break;
      start = bar + 1;
    }
    if (name == "p" && fields.size() > 36) {
      m.imgPath = fields[35];
      m.sndPath = fields[36];
    }
    for (std::string f : fields) {
      // A packed repeat or blank run ("^" and one base-36 digit) may stand
      // in front of a field's text; names themselves never hold "^".
      while (f.size() >= 2 && f[0] == '^') f.erase(0, 2);
      if (!IsMediaName(f)) continue;
      f = UnescapeField(f);
      (EndsWith(f, ".au", true) ? m.sounds : m.pictures).insert(f);
    }
  }
  return m;
}

std::string UrlOf(const PageMedia& m, const std::string& folder, const std::string& name) {
  std::string base = m.codeBase.empty() ? "." : m.codeBase;
  return EndSlash(base) + folder + name;
}

struct CheckResult {
  bool ran = false;  // the browser produced the checker's result
  std::vector<std::string> missing;
  std::string log;
};

// Opens a checker page in the page's folder in headless Chromium; each URL
// is read through a synchronous request, each picture also drawn by <img>.
CheckResult CheckInChromium(const std::string& folder, const std::vector<std::string>& urls,
                            const std::set<std::string>& pictureUrls) {
  std::string html = "<!DOCTYPE html><html><body><pre id=\"result\"></pre>\n";
  for (const std::string& u : pictureUrls)
    html += "<img data-url=\"" + u + "\" src=\"" + u + "\">\n";
  html +=
      "<script>\n"
      "var urls = [";
  for (size_t i = 0; i < urls.size(); ++i) html += (i ? ",\"" : "\"") + urls[i] + "\"";
  html +=
      "];\n"
      "var lines = [];\n"
      "urls.forEach(function (u) {\n"
      "  var x = new XMLHttpRequest();\n"
      "  try { x.open('GET', u, false); x.send();\n"
      "    lines.push((x.responseText.length > 0 ? 'OK ' : 'MISSING ') + u);\n"
      "  } catch (e) { lines.push('MISSING ' + u); }\n"
      "});\n"
      "window.onload = function () {\n"
      "  document.querySelectorAll('img').forEach(function (i) {\n"
      "    if (!(i.complete && i.naturalWidth > 0)) lines.push('MISSING ' + i.dataset.url);\n"
      "  });\n"
      "  lines.push('CHECKED');\n"
      "  document.getElementById('result').textContent = lines.join('\\n');\n"
      "};\n"
      "</script></body></html>\n";
  const std::string checker = folder + "/kp_media_check.html";
  test::WriteBytes(checker, html);

  TempDir profile;
  const std::string out = profile.file("dom.txt");
  const std::string cmd = std::string("timeout 120 ") + kChromium +
                          " --headless --no-sandbox --disable-gpu --disable-quic --no-first-run"
                          " --disable-background-networking --disable-component-update"
                          " --disable-sync --allow-file-access-from-files --user-data-dir='" +
                          profile.file("profile") + "' --dump-dom 'file://" + checker + "' > '" +
                          out + "' 2> '" + profile.file("err.txt") + "'";
  const int status = std::system(cmd.c_str());
  std::filesystem::remove(checker);

  CheckResult r;
  const std::string dom = test::ReadBytes(out);
  r.log = "exit " + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) + "\n" + dom +
          test::ReadBytes(profile.file("err.txt")).substr(0, 2000);
  size_t at = dom.find("<pre id=\"result\">");
  if (at == std::string::npos) return r;
  std::string text = dom.substr(at + 17, dom.find("</pre>", at) - at - 17);
  r.ran = text.find("CHECKED") != std::string::npos;
  for (size_t start = 0; start < text.size();) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (line.rfind("MISSING ", 0) == 0) r.missing.push_back(line.substr(8));
    start = end + 1;
  }
  return r;
}

class Chromium : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kChromium))
      GTEST_SKIP() << kChromium
                   << " is not installed (Debian package 'chromium'): the built "
                      "page cannot be opened in a browser";
    // The sample project and its media, in a folder of their own.
    for (const auto& e : std::filesystem::directory_iterator(test::SourcePath("data/Projects")))
      std::filesystem::copy(e.path(), src.file(e.path().filename().string()));
    ASSERT_EQ(LoadProject2(f.p, f.env, src.file("Demo.kpn")), LoadResult::Loaded);
    f.Generate();
    f.prompter().saveAnswers = {out.file("site/demo.html")};
    std::filesystem::create_directories(out.file("site"));
    BuildReport r = BuildApplet(f.c, true);
    ASSERT_EQ(r.result, BuildResult::Built);
    ASSERT_EQ(r.media.reported, 0);
    media = DecodePage(out.read("site/demo.html"));
    for (const std::string& n : media.pictures) {
      urls.push_back(UrlOf(media, media.imgPath, n));
      pictureUrls.insert(urls.back());
    }
    for (const std::string& n : media.sounds)
      urls.push_back(UrlOf(media, media.sndPath.empty() ? media.imgPath : media.sndPath, n));
  }

  TempDir src, out;
  test::Pub f;
  PageMedia media;
  std::vector<std::string> urls;
  std::set<std::string> pictureUrls;
};

TEST_F(Chromium, DemoPageNamesTheProjectsMedia) {
  // The decoding of the page agrees with the project it came from.
  std::set<std::string> pictures, sounds;
  if (!f.p.BackImg.empty()) pictures.insert(FileNameOnly(f.p.BackImg));
  for (int i = 1; i <= f.p.ButtonCount; ++i)
    for (int s = 1; s <= 3; ++s) {
      if (!f.p.button(i).Image[s].empty()) pictures.insert(FileNameOnly(f.p.button(i).Image[s]));
      if (!f.p.button(i).Snd[s].empty()) sounds.insert(FileNameOnly(f.p.button(i).Snd[s]));
    }
  EXPECT_EQ(media.pictures, pictures);
  EXPECT_EQ(media.sounds, sounds);
  EXPECT_FALSE(media.pictures.empty());
  EXPECT_FALSE(media.sounds.empty());
}

TEST_F(Chromium, DemoBuildLoadsEveryNamedPictureAndSound) {
  CheckResult r = CheckInChromium(out.file("site"), urls, pictureUrls);
  ASSERT_TRUE(r.ran) << r.log;
  EXPECT_TRUE(r.missing.empty()) << "missing: " << r.missing.front();
}

TEST_F(Chromium, ANamedFileDeletedFromTheBuildIsReportedMissing) {
  ASSERT_FALSE(media.pictures.empty());
  const std::string picture = *media.pictures.begin();
  ASSERT_TRUE(std::filesystem::remove(out.file("site/" + picture)));
  const std::string sound = *media.sounds.begin();
  ASSERT_TRUE(std::filesystem::remove(out.file("site/" + sound)));
  CheckResult r = CheckInChromium(out.file("site"), urls, pictureUrls);
  ASSERT_TRUE(r.ran) << r.log;
  std::set<std::string> missing(r.missing.begin(), r.missing.end());
  const std::string& soundFolder = media.sndPath.empty() ? media.imgPath : media.sndPath;
  EXPECT_EQ(missing, (std::set<std::string>{UrlOf(media, media.imgPath, picture),
                                            UrlOf(media, soundFolder, sound)}));
}

}  // namespace
}  // namespace kp

#include "tests/app/app_fixture.h"

#include "app/language_catalog.h"
#include "core/language.h"

#include <QDialog>
#include <QTest>

namespace kp::apptest {

ModalWatchdog::ModalWatchdog() {
  QObject::connect(&timer_, &QTimer::timeout, [this] {
    QWidget* w = QApplication::activeModalWidget();
    if (w != seen_) {
      seen_ = w;
      since_.start();
      return;
    }
    if (w && since_.elapsed() > 8000) {
      unexpected.push_back(w->windowTitle());
      if (auto* d = qobject_cast<QDialog*>(w)) d->reject();
      else w->close();
      seen_ = nullptr;
    }
  });
  timer_.start(200);
}

ModalWatchdog::~ModalWatchdog() { timer_.stop(); }

Answer TestPrompter::MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                            Icon icon) {
  boxes.push_back({BoxTitle(title).toStdString(), text, buttons});
  if (realBoxes) return QtPrompter::MsgBox(text, buttons, title, icon);
  if (!answers.empty()) {
    Answer a = answers.front();
    answers.pop_front();
    return a;
  }
  return (buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel) ? Answer::Yes : Answer::OK;
}

void WatchedTest::init() { watchdog_ = std::make_unique<ModalWatchdog>(); }

void WatchedTest::cleanup() {
  QVERIFY2(watchdog_->unexpected.empty(), "a window waited for an answer nobody gave");
  watchdog_.reset();
}

std::string TestPrompter::SaveFileDialog(const FileDialog& d) {
  saveDialogs.push_back(d);
  if (realFileDialogs) return QtPrompter::SaveFileDialog(d);
  if (saveAnswers.empty()) return "";
  std::string a = saveAnswers.front();
  saveAnswers.pop_front();
  return a;
}

std::string TestPrompter::OpenFileDialog(const FileDialog& d) {
  openDialogs.push_back(d);
  if (realFileDialogs) return QtPrompter::OpenFileDialog(d);
  if (openAnswers.empty()) return "";
  std::string a = openAnswers.front();
  openAnswers.pop_front();
  return a;
}

void TestPrompter::ProcessEvents() {
  if (onProcessEvents) onProcessEvents();
  QtPrompter::ProcessEvents();
}

void CopySampleProjects(const std::string& dest) {
  std::filesystem::create_directories(dest);
  std::filesystem::copy(test::SourcePath("data/Projects"), dest,
                        std::filesystem::copy_options::recursive |
                            std::filesystem::copy_options::overwrite_existing);
}

App::App() {
  CopySampleProjects(home.path() + "/Projects");
  store.Set(kSecParams, "DontShow_frm_Create_Recent", "1");
  program = std::make_unique<Program>(fs, store, prompter, association, home.path());
  program->endProcess = [this](int code) { ended.push_back(code); };
}

App::~App() {
  // Windows of the run go before the program's parts they point to.
  program.reset();
}

std::string PseudoMark(const std::string& heading, size_t k) {
  return "\xC2\xAB" "k:" + heading.substr(1, heading.size() - 2) + ":" + std::to_string(k) +
         "\xC2\xBB";
}

std::string PseudoLanguageFile() {
  std::vector<LanguageSectionText> sections;
  for (const CatalogSection& c : LanguageCatalog()) {
    LanguageSectionText s{c.heading, {}};
    for (size_t k = 1; k <= c.targets.size(); ++k) s.lines.push_back(PseudoMark(c.heading, k));
    sections.push_back(std::move(s));
  }
  return LanguageFileText(sections);
}

TablesSnapshot::TablesSnapshot() {
  for (const CatalogSection& c : LanguageCatalog())
    for (std::string* t : c.targets) saved_.emplace_back(t, *t);
}

TablesSnapshot::~TablesSnapshot() {
  for (auto& [t, text] : saved_) *t = text;
}

}  // namespace kp::apptest

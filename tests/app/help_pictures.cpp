// Writes the user guide's pictures: the program's real windows on the
// sample project, drawn offscreen and saved as PNG files in the folder
// given (data/Help). Run once when a window changes:
//   QT_QPA_PLATFORM=offscreen kp_help_pictures data/Help
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QGroupBox>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "core/launcher.h"
#include "design/frm_design.h"
#include "properties/frm_main.h"
#include "properties/frm_wav2au.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

QString outFolder;
int failures = 0;

QWidget* VisibleWindow(const QString& name) {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == name && w->isVisible()) return w;
  return nullptr;
}

void Settle(int ms) {
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < ms) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

bool Save(QWidget* w, const QString& file) {
  const QString path = outFolder + "/" + file;
  const bool ok = w->grab().save(path, "PNG");
  std::printf("%s %s\n", ok ? "wrote" : "FAILED", qPrintable(path));
  if (!ok) ++failures;
  return ok;
}

// Opens a window with `open` and saves it once it shows. A modal window is
// saved and closed from the event loop it runs in.
void Shoot(const QString& name, const QString& file, const std::function<void()>& open) {
  bool done = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    QWidget* w = VisibleWindow(name);
    if (!w || done) return;
    done = true;
    poll.stop();
    Settle(150);
    Save(w, file);
    if (auto* d = qobject_cast<QDialog*>(w)) d->reject();
    else w->close();
  });
  poll.start(20);
  open();
  QElapsedTimer t;
  t.start();
  while (!done && t.elapsed() < 5000) QApplication::processEvents(QEventLoop::AllEvents, 10);
  if (!done) {
    std::printf("FAILED %s: the window %s did not show\n", qPrintable(file), qPrintable(name));
    ++failures;
  }
}

void Press(QWidget* in, const char* name) {
  auto* b = in->findChild<QPushButton*>(name);
  if (b) b->click();
  else std::printf("no button %s\n", name);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: kp_help_pictures FOLDER\n");
    return 2;
  }
  outFolder = QString::fromLocal8Bit(argv[1]);
  std::filesystem::create_directories(argv[1]);

  App a;
  a.prompter.realFileDialogs = true;
  a.store.Set(kSecParams, "DontShowReadyForUpload", "1");
  a.program->Main(a.demo());
  frmMain* main = a.main();
  main->show();
  main->resize(main->sizeHint().expandedTo(QSize(760, 560)));
  Settle(300);

  Save(main, "main.png");
  Save(main->Design(), "design.png");
  Save(main->frameButtons, "buttons.png");
  Shoot("frmSetAction", "set_action.png", [&] { Press(main, "btnAction"); });
  Shoot("frmButtonSpecial", "button_effects.png", [&] { Press(main, "btnTFrame"); });
  Shoot("frmAppletBorder", "applet_border.png", [&] { Press(main, "btnAppletBorder"); });
  Shoot("frmAppletFade", "applet_fade.png", [&] { Press(main, "btnAppletFade"); });
  Shoot("frmSpecial", "applet_more.png", [&] { Press(main, "btnAppletSpecial"); });
  Shoot("frmAdvanced", "program_settings.png", [&] {
    if (QAction* m = main->findChild<QAction*>("mnuAdvanced")) m->trigger();
  });

  // The HTML window and the publishing dialogs it leads to.
  main->btnBuild_Click();
  Settle(300);
  QWidget* html = VisibleWindow("frmHTML");
  if (html) {
    Save(html, "html.png");
    Shoot("SaveFileDialog", "save_applet.png", [&] { Press(html, "btnBuild"); });
    Shoot("frmAppletPaths", "applet_paths.png", [&] { Press(html, "btnAdvanced"); });
    Shoot("frmSurHTML", "surrounding_html.png", [&] {
      if (QAction* m = html->findChild<QAction*>("mnuSurHTML")) m->trigger();
    });
    html->close();
  } else {
    std::printf("FAILED: the HTML window did not show\n");
    ++failures;
  }

  // Tools and Help.
  Shoot("frmHex2Color", "hex2color.png", [&] { main->mnuHex2Color->trigger(); });
  PosixLauncher launcher;
  a.env().launcher = &launcher;
  const std::string sounds = a.home.path() + "/Sounds";
  std::filesystem::create_directories(sounds);
  std::filesystem::copy_file(std::string(KP_SOURCE_DIR) + "/data/Sounds/beep.wav",
                             sounds + "/beep.wav");
  std::filesystem::create_directories(a.home.path() + "/Tools/W2A");
  std::filesystem::create_symlink(std::string(KP_BINARY_DIR) + "/bin/Tools/W2A/w2a",
                                  a.home.path() + "/Tools/W2A/w2a");
  main->mnuWav2Au->trigger();
  if (auto* w = main->findChild<frmWav2Au*>("frmWav2Au")) {
    w->Convert({sounds + "/beep.wav", sounds + "/missing.wav"});
    Settle(200);
    Save(w, "wav2au.png");
    w->close();
  }
  Shoot("frmAbout", "about.png", [&] {
    for (QAction* m : main->mnuHelp->actions())
      if (m->objectName() == "mnuAbout") m->trigger();
  });
  return failures == 0 ? 0 : 1;
}

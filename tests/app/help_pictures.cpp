// Writes the user guide's pictures: the program's real windows on the
// sample project, drawn offscreen and saved as PNG files in the folder
// given (data/Help). Run once when a window changes, as root:
//   QT_QPA_PLATFORM=offscreen kp_help_pictures data/Help
// The windows show folders, so the program runs as an author would have it
// installed: the program folder /usr/share/kestrelpane, the author's home
// /home/author. Both are laid out for real, in a mount namespace of this
// process alone, so the machine's own /usr/share and /home stay untouched.
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QGroupBox>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>

#include "core/folders.h"
#include "core/fs.h"
#include "core/launcher.h"
#include "design/frm_design.h"
#include "properties/frm_main.h"
#include "properties/frm_wav2au.h"
#include "tests/app/app_fixture.h"
#include "tests/app/window_texts.h"

using namespace kp;
using namespace kp::apptest;

namespace {

namespace fs = std::filesystem;

const std::string kProgramFolder = "/usr/share/kestrelpane";
const std::string kAuthorHome = "/home/author";
const std::string kUserFolder = kAuthorHome + "/.local/share/kestrelpane";

QString outFolder;
int failures = 0;

bool Fail(const char* what) {
  std::fprintf(stderr, "kp_help_pictures: %s: %s\n", what, std::strerror(errno));
  return false;
}

// /usr/share gets a writable layer and /home an empty folder, both seen by
// this process only and gone when it ends; the scratch space for the layer
// is unmounted from view once the layer holds it.
bool PrivateInstalledTree() {
  if (unshare(CLONE_NEWNS) != 0) return Fail("a mount namespace of its own needs root");
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
    return Fail("making the mounts private");
  if (mount("kp_scratch", "/mnt", "tmpfs", 0, nullptr) != 0) return Fail("tmpfs on /mnt");
  mkdir("/mnt/upper", 0755);
  mkdir("/mnt/work", 0755);
  if (mount("kp_share", "/usr/share", "overlay", 0,
            "lowerdir=/usr/share,upperdir=/mnt/upper,workdir=/mnt/work") != 0)
    return Fail("a writable layer over /usr/share");
  if (umount2("/mnt", MNT_DETACH) != 0) return Fail("hiding the scratch space");
  if (mount("kp_home", "/home", "tmpfs", 0, "mode=755") != 0) return Fail("tmpfs on /home");
  return true;
}

// What `cmake --install` puts into the program folder, and the author's
// home with a sound of their own to convert.
void LayOutInstall() {
  fs::create_directories(kProgramFolder);
  fs::copy(std::string(KP_SOURCE_DIR) + "/data", kProgramFolder, fs::copy_options::recursive);
  for (const char* built : {"english_lng", "KestrelPane.js"}) {
    const std::string from = std::string(KP_BINARY_DIR) + "/bin/" + built;
    if (fs::exists(from)) fs::copy_file(from, kProgramFolder + "/" + built);
  }
  fs::create_directories(kProgramFolder + "/Tools/W2A");
  fs::create_symlink(std::string(KP_BINARY_DIR) + "/bin/Tools/W2A/w2a",
                     kProgramFolder + "/Tools/W2A/w2a");
  fs::create_directories(kAuthorHome + "/Sounds");
  fs::copy_file(std::string(KP_SOURCE_DIR) + "/data/Sounds/beep.wav",
                kAuthorHome + "/Sounds/beep.wav");
  setenv("HOME", kAuthorHome.c_str(), 1);
  setenv("USER", "author", 1);
  for (const char* v : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "KESTRELPANE_HOME"})
    unsetenv(v);
}

// The program as installed: it reads the program folder and writes into
// the author's data folder, made on first use like the real start does.
struct InstalledApp {
  InstalledApp() {
    store.Set(kSecParams, "DontShow_frm_Create_Recent", "1");
    store.Set(kSecParams, "DontShowReadyForUpload", "1");
    prompter.realFileDialogs = true;
    program = std::make_unique<Program>(disk, store, prompter, association, kProgramFolder);
    program->endProcess = [](int) {};
    program->env().userFolder = kUserFolder;
    PrepareUserFolder(program->env());
  }
  ~InstalledApp() { program.reset(); }
  DiskFileSystem disk;
  MemorySettings store;
  TestPrompter prompter;
  FakeAssociation association;
  std::unique_ptr<Program> program;
};

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
  // A scratch folder of this run is no place an author's program shows.
  const QStringList scratch = TempPathsShown(w);
  if (!scratch.isEmpty()) {
    std::printf("FAILED %s: the window shows %s\n", qPrintable(path), qPrintable(scratch.first()));
    ++failures;
    return false;
  }
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
  if (argc != 2) {
    std::fprintf(stderr, "usage: kp_help_pictures FOLDER\n");
    return 2;
  }
  // Before the new mounts hide what lies under them, and before any thread.
  const fs::path out = fs::absolute(argv[1]);
  for (const char* hidden : {"/home/", "/mnt/", "/usr/share/"})
    if (out.string().rfind(hidden, 0) == 0) {
      std::fprintf(stderr, "kp_help_pictures: FOLDER must not lie under %s\n", hidden);
      return 2;
    }
  fs::create_directories(out);
  if (!PrivateInstalledTree()) return 1;
  LayOutInstall();
  QApplication app(argc, argv);
  outFolder = QString::fromStdString(out.string());

  InstalledApp a;
  a.program->Main(kUserFolder + "/Projects/Demo.kpn");
  frmMain* main = a.program->MainWindow();
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
  a.program->env().launcher = &launcher;
  const std::string sounds = kAuthorHome + "/Sounds";
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

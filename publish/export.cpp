#include "publish/export.h"

#include "core/conv.h"
#include "core/folders.h"
#include "core/settings.h"
#include "project/project_file.h"
#include "publish/build.h"

namespace kp {

std::string ExportProposedName(const Project& p) {
  return p.sProjectFile.empty() ? p.sProjectName + ".kpn" : FileNameOnly(p.sProjectFile);
}

ExportReport mnuExport_Click(PublishContext& c) {
  Env& env = c.env;
  ExportReport report;
  if (c.view) c.view->SetFileMenuEnabled(false);

  FileDialog fd;
  fd.filter = kProjectFilter;
  fd.fileName = ExportProposedName(c.p);
  fd.defaultExt = "kpn";
  fd.overwritePrompt = true;
  fd.hideReadOnly = true;
  fd.pathMustExist = true;
  fd.folder = GetParam(env, "sExportFolder");
  if (fd.folder.empty()) fd.folder = EndBackslash(WriteFolder(env)) + "Export";
  // Made only once a name in it is chosen: a cancel leaves no folder.
  fd.folderMadeOnAccept = true;

  std::string chosen;
  for (;;) {
    chosen = env.prompter.SaveFileDialog(fd);
    if (chosen.empty()) {
      if (c.view) c.view->SetFileMenuEnabled(true);
      return report;
    }
    PrepareDir(env, GetFolder(chosen));
    SetParam(env, "sExportFolder", GetFolder(chosen));
    if (GetParam(env, "DontShowSomeFilesWarning") != "0" ||
        !FolderHoldsFiles(env, GetFolder(chosen)))
      break;
    if (SomeFilesWarning(c)) break;
    fd.folder = GetFolder(chosen);
  }

  // A failed save has told its own failure; the media are copied all the
  // same, as they do not depend on it.
  report.path = chosen;
  report.saved = SaveProject(c.p, env, chosen, true, true);
  // Sounds go with the pictures, beside the project file, whatever the
  // applet's own folders say.
  report.media = Copy_PixSnds_Files(c, GetFolder(chosen), "");

  if (c.view) c.view->SetFileMenuEnabled(true);
  return report;
}

}  // namespace kp

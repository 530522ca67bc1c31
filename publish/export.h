// Exporting a project: a project file and all its pictures and sounds in one
// folder, so the project can move to another machine. The file is written
// in the export form, whose paths are the file names alone.
#pragma once

#include <string>

#include "publish/build.h"
#include "publish/context.h"

namespace kp {

inline constexpr const char* kProjectFilter =
    "Kestrel Pane Projects (*.kpn)|*.kpn|All Files (*.*)|*.*";

// The name the export dialog proposes: the project file's name, or
// sProjectName + ".kpn" for a project never saved.
std::string ExportProposedName(const Project& p);

struct ExportReport {
  std::string path;    // the exported file, "" when the dialog was cancelled
  bool saved = false;  // the project file was written
  CopyReport media;
};

// mnuExport_Click.
ExportReport mnuExport_Click(PublishContext& c);

}  // namespace kp

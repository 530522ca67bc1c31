// "Test in Browser": the whole page built in the program's private folder
// AppletTemp and opened in the browser chosen in cmbBrowser, or in the
// JDK's applet viewer when the entry points to one.
#pragma once

#include <string>

#include "publish/context.h"

namespace kp {

// The test page's name without extension: the project file's name without
// its last four characters, else sProjectName, else "KestrelPane";
// unescaped and cleaned with the dots kept.
std::string GetTempPageName(const Project& p);

// True for a path ending in "appletViewer.exe" or "appletViewer" (any case).
bool IsAppletViewer(const std::string& path);

// btnPreview_Click. Each step is on its own: one that fails is skipped and
// the next runs. Returns the page written ("" when it could not be).
std::string TestInBrowser(PublishContext& c);

}  // namespace kp

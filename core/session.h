// Model routines that need the outside world: defaults that come from the
// settings, and pushing the applet record to the windows.
#pragma once

#include "core/env.h"
#include "core/model.h"

namespace kp {

// The documented defaults, the two search folders from the settings, and
// the record pushed to the windows (SetMainParams, under bFillingPanel).
void SetDefaultMainParams(Project& p, Env& env);
void SetMainParams(Project& p, Env& env);

// The main window's title for an open project: path, " - ", title text.
std::string ProjectTitle(const Project& p);
std::string DesignTitle(const std::string& mainTitle);

}  // namespace kp

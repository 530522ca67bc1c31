// The model side of starting, renewing and leaving a project.
#pragma once

#include <functional>
#include <string>

#include "core/env.h"
#include "core/model.h"

namespace kp {

// What the main window's first load does to the model: state "UP", the
// applet defaults and one default button; nothing to save yet.
// Returns false when the default record was damaged (the process ends).
bool FreshStart(Project& p, Env& env);

// New project: the applet defaults and no button at all, unlike a fresh
// start; no file, nothing to save.
void NewProject(Project& p, Env& env);

// "SAVED" when nothing needs saving; otherwise asks and answers "YES"
// (after running `save`), "NO" or "CANCEL".
std::string AskToSaveChanges(Project& p, Env& env, const std::function<void()>& save);

}  // namespace kp

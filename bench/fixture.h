// Projects and a quiet environment for the benchmarks.
#pragma once

#include "core/env.h"
#include "core/model.h"

namespace kp::bench {

class QuietPrompter : public Prompter {
 public:
  Answer MsgBox(const std::string&, Buttons, const std::string&, Icon) override {
    return Answer::OK;
  }
  bool Notice(const std::string&, const std::string&, const std::string&, bool c) override {
    return c;
  }
};

struct BenchEnv {
  DiskFileSystem fs;
  MemorySettings store;
  QuietPrompter prompter;
  ProjectView view;
  Env env{fs, store, prompter, view, "/tmp"};
};

// `count` buttons with every feature in use: labels per state, fades,
// borders, two-tone frames, pictures, sounds and programs.
Project FullProject(int count, const std::string& mediaFolder = "/tmp");

}  // namespace kp::bench

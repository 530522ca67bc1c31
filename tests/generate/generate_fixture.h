// Projects and helpers shared by the generator tests.
#pragma once

#include <string>
#include <vector>

#include "core/model.h"
#include "generate/html_generator.h"
#include "tests/support/test_env.h"

namespace kp::test {

// The two-button project whose block is known character for character:
// "Home" and "News", the second with the picture n.gif (created in the
// temp folder) and the sound click.au.
Project TwoButtonExample(TestEnv& t);

// The code box of that project, character for character.
std::string TwoButtonExampleBlock();

// A project with applet defaults and n plain buttons at (10 + 110 * k, 10).
Project PlainProject(int n);

// Line k (from 1) of a text split at CR LF; "" beyond the last.
std::string LineOf(const std::string& text, int k);
// The lines of a CR LF text (a final CR LF ends the last line).
std::vector<std::string> Lines(const std::string& text);
// The fields between `value="` and `">` of a parameter line, each without
// its "|".
std::vector<std::string> ValueFields(const std::string& paramLine);

// Counts generations and keeps what the HTML window was shown.
class RecordingView : public HtmlWindowView {
 public:
  void SetGenerating(bool busy) override {
    if (busy) ++generations;
    busyNow = busy;
  }
  void FillAppletPaths(const AppletPathsBoxes& b) override { boxes = b; }
  void SetAutoReplaceFileName(const std::string& s) override { autoReplace = s; }

  int generations = 0;
  bool busyNow = false;
  AppletPathsBoxes boxes;
  std::string autoReplace;
};

}  // namespace kp::test

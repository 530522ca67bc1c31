// Replacing the applet code in a page the user made by hand: find the
// applets in the page, let the user tick which to replace, swap in the new
// code from the code box, keep a backup of the old page, and optionally
// refresh the media and class files beside the page. The page is handled
// as bytes: everything outside the replaced applets stays as it was.
#pragma once

#include <string>
#include <vector>

#include "publish/context.h"

namespace kp {

// What a replacement did: the applets it replaced, and the ticked rows
// that were not (no closing tag, or passed over by the search).
struct ReplaceOutcome {
  int replaced = 0;
  std::vector<int> notReplaced;  // row numbers from 1
  bool unclosed = false;         // the search ended at an applet without "</applet>"
};

// frmAutoRepHTML_2: the page and the applets found in it.
struct AutoReplacePage {
  std::string pageText;  // the whole file, byte for byte
  bool bLoaded = false;  // pageText is valid; cleared when a replace starts
  std::string sourcePath;
  std::string backupPath;
  std::string tempPath;
  std::vector<std::string> rows;  // lstApplets: "<applet ...>..."
  std::vector<bool> ticked;
  std::string txtMSG;
  ReplaceOutcome outcome;  // of the last replacement
};

// The word of the count message: "No", "One", ... for counts below 10 (the
// table has no "Eight": 8 reads "Nine", 9 reads "Ten"), digits from 10.
std::string CountWord(int count);
// word + " applet(s) found in: " + the file name of path.
std::string CountMessage(int count, const std::string& path);

// The applets of a page text: each "<applet" up to its next ">", and "...".
std::vector<std::string> FindApplets(const std::string& pageText);

// The new code out of the code box: from "<APPLET" (any case) through the
// closing tag (any case) that stands at the start of a line. "" when the
// box holds no applet.
std::string NewAppletCode(const std::string& codeBox);

// Replaces the ticked applets (row k ticked: ticked[k - 1]) of a page text
// by newCode. The search restarts from the replaced applet's old end, as
// the program always has. Returns the new text. Time linear in the page and
// the new text.
std::string ReplaceTickedApplets(const std::string& pageText, const std::vector<bool>& ticked,
                                 const std::string& newCode, ReplaceOutcome* outcome = nullptr);

// page.html -> page_backup.html, then page_backup1.html, ... whichever is
// free first.
std::string BackupPathFor(Env& env, const std::string& pagePath);

// txtAutoReplaceHTML_FileName_KeyUp: the box goes into sOutputHTML and the
// project is changed.
void txtAutoReplaceHTML_FileName_KeyUp(PublishContext& c, const std::string& text);
// btnGetAutoReplaceHTML_filename_Click: the page picker.
void btnGetAutoReplaceHTML_filename_Click(PublishContext& c);
// btnAutoReplaceHTML_Click (and Enter in the box). True when a replacement
// was carried out.
bool btnAutoReplaceHTML_Click(PublishContext& c);

// Loads the page and shows the check list until a replacement is carried
// out (true) or the list is cancelled (false).
bool BeginOperation(PublishContext& c, AutoReplacePage& page, const std::string& path);
// Reads the page and fills the rows; false (after the failure's text) when
// the page cannot be read.
bool DoDetect(PublishContext& c, AutoReplacePage& page, const std::string& path);
// btnReplace_Click: true when the replacement ran and the window closes.
bool btnReplace_Click(PublishContext& c, AutoReplacePage& page);
// The replacement into the temp file; false (after its message) when it
// did not run.
bool RunReplacement(PublishContext& c, AutoReplacePage& page);
// Backup, page from the temp file, and the media when asked for. False when
// a step failed (its text was shown).
bool ReplaceFileStep(PublishContext& c, AutoReplacePage& page);
// frmAutoRepHTML_MSG, the closing report.
void Ready(PublishContext& c, int total, int replaced, const std::string& path,
           const std::string& backup);

}  // namespace kp

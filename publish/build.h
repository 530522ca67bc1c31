// Building the applet folder: the page file, the folders the applet expects
// below it, the applet's own files and every picture and sound of the
// project. "Save HTML Only" is the same without the copying.
#pragma once

#include <string>
#include <vector>

#include "core/env.h"
#include "core/model.h"
#include "generate/html_generator.h"
#include "publish/context.h"

namespace kp {

inline constexpr const char* kHtmlFilter = "HTML (*.htm;*.html)|*.htm;*.html|All Files (*.*)|*.*";

// What a copy loop did. `failed` counts every failed copy, also those that
// showed nothing; `reported` the error boxes shown.
struct CopyReport {
  int copied = 0;
  int skipped = 0;  // the file already lies where it should be
  int failed = 0;
  int reported = 0;
  // One line per failed copy: the file and the system's reason, also for
  // those that showed nothing, so that a caller can tell them all.
  std::vector<std::string> failures;
  void Add(const CopyReport& o);
};

enum class BuildResult {
  Built,        // the page was written
  Cancelled,    // the save dialog was cancelled: nothing changed
  WriteFailed,  // the page could not be written (the failure was shown)
};

struct BuildReport {
  BuildResult result = BuildResult::Cancelled;
  std::string page;  // the chosen page path
  CopyReport media;
};

// The page around the code box, as it stands.
std::string PageText(const Project& p, const CodeBox& txtHTML);
// The text a build writes into the page file: PageText with the player's
// script element when PlayerWanted.
std::string BuildPageText(PublishContext& c);

// btnBuild_Click and mnuBuild_Click (true), mnuSaveHTML_Only_Click (false).
BuildReport BuildApplet(PublishContext& c, bool bWithFiles);

// Makes the code base, picture and sound folders below the page's folder and
// copies everything there, then the folders notice.
CopyReport Copy_Req_File(PublishContext& c, const std::string& pagePath);

// Creates every level of a folder; a server address creates nothing.
void MakePathFolders(Env& env, const std::string& path);

// KestrelPane.class, .cab, (with bAddJAR) .jar and (when PlayerWanted) the
// player's .js from the program folder. Shows nothing: a missing file goes
// unnoticed; a file that is there and could not be copied is counted.
CopyReport Copy_Class_Files(PublishContext& c, const std::string& folder);

// The background, then all pictures of all buttons, then all sounds. An
// empty soundFolder sends the sounds to imageFolder.
CopyReport Copy_PixSnds_Files(PublishContext& c, const std::string& imageFolder,
                              const std::string& soundFolder);

// Waits up to 1 + 2 + 3 seconds for an ".au" file that is not there yet
// (the converter may still be writing it).
void WaitForAuFile(PublishContext& c, const std::string& path);

// The phase word of the copy loop, for its error handler.
enum class CopyPhase { None, Background, Pictures, Sounds };
std::string CopyErrorMessage(CopyPhase phase, const std::string& file, int button);
// The run-time error number of a failed copy: 70 permission denied (also a
// file copied onto itself), 53 file not found, 76 path not found, 75 other.
int CopyErrorNumber(Env& env, const std::string& from, const std::string& to,
                    const IoStatus& status);

// "Please note:" about the folders the applet expects, unless bForTest.
void ShowFoldersNotice(PublishContext& c, bool bForTest);

// frmSomeFilesWarning: true on Yes (also kept in bSomeFilesProceed).
bool SomeFilesWarning(PublishContext& c);
// frmReadyForUpload for the folder of the page.
void ReadyForUpload(PublishContext& c, const std::string& folder);
// True when the folder holds at least one file.
bool FolderHoldsFiles(Env& env, const std::string& folder);

}  // namespace kp

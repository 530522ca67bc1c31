// The publishing commands' texts: the captions of their windows and their
// messages, one table a language section. A window of the program shows
// these same tables, so what the commands ask for and what the windows
// show are one text, in English or translated.
#pragma once

#include "core/text_table.h"

namespace kp {

// "[frmSomeFilesWarning]": the occupied-folder warning.
TextTable& SomeFilesWarningTexts();
// "[frmReadyForUpload]": the closing dialog of a build, then the build's
// copy messages and its notice about folders.
TextTable& ReadyForUploadTexts();
// "[frmAutoRepHTML_MSG]": the report after a replacement, then the
// replacement's messages.
TextTable& ReplaceReportTexts();
// "[frmAutoRepHTML_2]": the check list of applets, then the count message
// and the messages about the page.
TextTable& ReplaceListTexts();

// The English tables, as built in.
const TextTable& DefaultSomeFilesWarningTexts();
const TextTable& DefaultReadyForUploadTexts();
const TextTable& DefaultReplaceReportTexts();

}  // namespace kp

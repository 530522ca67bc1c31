#include "publish/publish_texts.h"

namespace kp {

namespace {

TextTable SomeFiles() {
  return {
      {"Caption", "Warning. "},
      {"txtMessage.1", "This folder already contains files."},
      {"txtMessage.2", "Such actions may overwrite some of them."},
      {"txtMessage.3", "Are you sure you want to proceed?"},
      {"btnYes", "&Yes"},
      {"btnNo", "&No"},
      {"chkShowNextTime", "show this warning next time."},
  };
}

TextTable Ready() {
  return {
      {"Caption", "Applet built. "},
      {"lblMessage", "The applet was successfully built, and is ready for upload."},
      {"lblCaseSensitive",
       "Note: everything is Case-Sensitive, so if your file is recorded as \"MyImage.gif\" and you "
       "upload it as \"MYimaGe.GIF\" it won't work."},
      {"btnExplore", "View files in the File &Manager"},
      {"btnOK", "&Close"},
      {"chkShowNextTime", "show this message next time."},
      {"sCopyBackground", "Can't copy BackGround image:"},
      {"sCopyPicture", "Can't copy Picture for Button # %1"},
      {"sCopySound", "Can't copy Sound for Button # %1"},
      {"sUnexpectedError", "Unexpected error. Please restart your computer."},
      {"sErrorNumber", " Error Number:"},
      {"sStopMessages", "Press Cancel to stop showing error messages."},
      {"sCheckingAu", "Checking AU file(s)..."},
      {"sNoticeTitle", "Notice"},
      {"sFoldersNotice",
       "Please note:\r\n\r\nThis applet expects content in different folders.\r\nYou should "
       "upload all specified folders to make applet work."},
      {"sShowNoticeNextTime", "Show this notice next time."},
  };
}

TextTable Report() {
  return {
      {"Caption", "Operation Completed"},
      {"btnOK", "&Ok"},
      {"btnExplore", "View files in the File &Manager"},
      {"chkShowNextTime", "show this message next time."},
      {"sReplaced",
       "File: \r\n\"%1\"\r\n is updated and is ready for upload.\r\n\r\nTotal applets found: %2. "
       "Replaced applets: %3.\r\n\r\nOriginal HTML file saved as: \r\n\"%4\"\r\n"},
      {"sNoneReplaced", "No applets were replaced in \"%1\""},
      {"sReloadInput", "Please reload the input file."},
      {"sNoAppletsInFile",
       "I'm sorry... I wasn't able to find any existing applets in this file.\r\nYou have to "
       "insert your applet to this file manually."},
      {"sCheckOneTitle", "No Applets Selected for Replace"},
      {"sCheckOne", "Please check at least one applet."},
      {"sCantFindApplets",
       "I can't find any applets.\r\n\r\nPossible causes:\r\n 1.There are no applets created by "
       "Kestrel Pane\r\n 2. Missing  \"<APPLET...\" \r\n 3. Missing  \"</APPLET>\""},
      {"sNotCopiedBesidePage", "Some files could not be copied beside the page:"},
      {"sAppletNotReplaced", "Applet %1 of \"%2\" was not replaced%3"},
      {"sAppletsNotReplaced", "Applets %1 of \"%2\" were not replaced%3"},
      {"sUnclosedApplet", ": the page has an \"<applet\" without its closing \"</applet>\"."},
      {"sPassedOver", ": the search passed over it after a longer applet was replaced."},
  };
}

}  // namespace

TextTable& SomeFilesWarningTexts() {
  static TextTable t = SomeFiles();
  return t;
}

TextTable& ReadyForUploadTexts() {
  static TextTable t = Ready();
  return t;
}

TextTable& ReplaceReportTexts() {
  static TextTable t = Report();
  return t;
}

const TextTable& DefaultSomeFilesWarningTexts() {
  static const TextTable t = SomeFiles();
  return t;
}

const TextTable& DefaultReadyForUploadTexts() {
  static const TextTable t = Ready();
  return t;
}

const TextTable& DefaultReplaceReportTexts() {
  static const TextTable t = Report();
  return t;
}

TextTable& ReplaceListTexts() {
  // The count words have none for eight, so 8 reads "Nine" and 9 "Ten":
  // kept as the program has always counted.
  static TextTable t = {
      {"Caption", "Replacing Applet Code in existing HTML file"},
      {"btnSelectAll", "Select All"},
      {"btnDeselectAll", "Clear All"},
      {"btnReplace", "Replace Selected Applets"},
      {"btnCANCEL", "Cancel"},
      {"sCount0", "No"},
      {"sCount1", "One"},
      {"sCount2", "Two"},
      {"sCount3", "Three"},
      {"sCount4", "Four"},
      {"sCount5", "Five"},
      {"sCount6", "Six"},
      {"sCount7", "Seven"},
      {"sCount8", "Nine"},
      {"sCount9", "Ten"},
      {"sAppletFoundIn", " applet found in: "},
      {"sAppletsFoundIn", " applets found in: "},
      {"sPageNotFound", "File: \"%1\" not found"},
      {"sWriteProtected", "%1 is write-protected (read-only): it was not overwritten"},
  };
  return t;
}

}  // namespace kp

#include "core/messages.h"

namespace kp {

namespace {

TextTable DefaultMessages() {
  return {
      {"sAskSaveTitle", "KestrelPane"},
      {"sAskSave", "The Project %1 has changed.\r\n\r\nDo you want to Save the changes?"},
      {"sCommandFileNotFound", "File: %1\r\nNot found. Error # 21-01"},
      {"sWriteValueFailed", "Unable to write registry or .ini file value."},
      {"sDeleteKeyFailed", "Unable to delete registry key."},
      {"sResetAsk", "Reset KestrelPane 2.02 registry?"},
      {"sErrorColon", "Error: %1"},
      {"sStrangeTitle", "Warning! Strange chars..."},
      {"sWarnNextTime", "Warn next time"},
      {"sSpaceInFileName",
       "This file name contains spaces!\r\nMost web servers do not support such file "
       "names.\r\nPlease consider to rename your file."},
      {"sBackslashInFileName",
       "This file name contains backlash!\r\nUnlike Windows most web servers use '/' instead of "
       "'\\' .\r\nPlease consider to correct your file path."},
      {"sSpaceInTarget", "Spaces are illigal in Target name."},
      {"sDotInTarget",
       "Dots, comas and other special chars are illigal in Target name.\r\nYou should input the "
       "name of the frame here not the file name.\r\nName of the frame can be found in your HTML "
       "page, it should look like: <frame name=\"main\"..."},
      {"sRegistryCorrupted",
       "Registry settings are currupted. Program will try to restore previous settings."},
      {"sSettingsRestored", "Settings restored. Please restart the program."},
      {"sWriteToRegistryError", "Error on WriteToREgistry(%1)\r\n%2"},
      {"sMissingFileTitle", "File Not Found"},
      {"sMissingFile",
       "Possible causes:\r\n 1. File was moved or deleted.\r\n 2. Project was created on another "
       "machine, and was not exported\r\n     via 'File'->'Export...' menu.\r\n\r\nSolutions: "
       "\r\n 1. You may copy missing files to the same location where project file is "
       "located:\r\n%1\r\n 2. Return to the machine where project was originally created and "
       "export it\r\n     via 'File'->'Export...' menu, then transfer all exported files to this "
       "machine.\r\n\r\nClick OK to continue with error messages or click Cancel to continue "
       "without error messages."},
      {"sNotSaved",
       "The project was not saved: in %1, %2 %3.\r\n\r\nPlease change it and save again. "
       "Nothing was written to %4."},
      {"sSavingButtons", "Saving Buttons to File..."},
      {"sSavingButton", "Saving Button # %1 of %2"},
      {"sSaveFailed",
       "Error Saving Buttons. File may be Read Only, Hidden or used by another "
       "application.\r\n\r\n%1"},
      {"sWarningTitle", "Warning"},
      {"sEarlierVersion",
       "Project was created by earlier version of Kestrel Pane\r\n\r\nNote: Saving will convert "
       "it to version 2.02"},
      {"sLaterVersion",
       "This file looks like: %1\r\nYou should use the same or later version of the program to "
       "open this file.\r\nThe latest version is waiting for you at %2"},
      {"sNotSupported",
       "File type not supported or it was created by later version of the program."},
      {"sLoadingProject", "Loading Project..."},
      {"sLoadingButton", "Loading Button # %1 of %2"},
      {"sErrorLoading", "Error loading project.\r\n%1"},
      {"sWarning101Title", "Warning!"},
      {"sWarning101",
       "Warning! Creation of more then 100 buttons requires a lot of RAM!\r\n\r\nIf you still "
       "need more buttons either use several applets (button projects)\r\nand put then into a "
       "single HTML file,\r\nor make sure you have enough available memory.\r\n\r\nPlease save "
       "your project frequently to avoid possible data loss!\r\n\r\nClick OK to create more "
       "buttons, or Cancel to stop."},
      {"sAddFailed", "Error on btnDuplicate_Click()\r\n%1"},
      {"sNothingSelected", "Nothing selected"},
      {"sDefaultMade", "Properties of this button will be used to create new ones."},
      {"sWavToAuTitle", "Wav to Au convertion"},
      {"sWavToAu",
       "Kestrel Pane will run W2A utility to convert WAV file to AU type, because Java does not "
       "support WAV files.\r\n\r\nOnly WAV files in PCM format can be converted.\r\n\r\nPlease "
       "see Tools/W2A/ReadMe.txt for more information."},
      {"sShowMessageNextTime", "Show this message next time"},
      {"sWavToAuError",
       "There was an error when trying to convert WAV file to AU:\r\n%1\r\n\r\nPlease see "
       "Tools/W2A/ReadMe.txt"},
      {"sErrorTitle", "Error"},
      {"sToolNotFound", "%1 not found."},
      // A program on this system has no extension of its own.
      {"sProgramFilter", "Programs (*)|*| All Files (*.*)|*.*"},
      {"sDefaultRecordNotWritten",
       "The built-in button record could not be written to %1:\r\n%2\r\nKestrel Pane goes on "
       "with the built-in record until it ends."},
  };
}

}  // namespace

TextTable& SharedMessages() {
  static TextTable t = DefaultMessages();
  return t;
}

void ResetSharedMessages() {
  // Texts are changed in place: the language catalog holds their addresses.
  TextTable& t = SharedMessages();
  const TextTable defaults = DefaultMessages();
  for (size_t i = 0; i < t.size() && i < defaults.size(); ++i) t[i].text = defaults[i].text;
}

const std::string& SharedText(std::string_view name) { return TextIn(SharedMessages(), name); }

std::string SharedText(std::string_view name, const std::vector<std::string>& args) {
  return TextWith(SharedMessages(), name, args);
}

}  // namespace kp

// The button text record: one line of text per button, kept in the
// settings store for the clipboard ("_buffer") and the default button
// ("sDefaultBtn"). New buttons and every button of a loaded project start
// from it.
#pragma once

#include <string>

#include "core/env.h"
#include "core/model.h"

namespace kp {

// The default record of a fresh installation.
extern const char* const kBuiltInDefaultButton;

// The record text of a button.
std::string ButtonRecordText(const tButton& b);

enum class RecordResult {
  Applied,      // the record (or nothing, for a record without "|") applied
  NothingStored,  // a named key held nothing: the button is unchanged
  ProcessEnds,  // the record was damaged; the settings were restored and
                // the user was told to restart: the caller ends the process
};

// Fills Btn(i) from the record stored under `key` ("" = "sDefaultBtn").
RecordResult MakeDefaultButton(Project& p, Env& env, int i, bool keepNumberName,
                               const std::string& key = "");

// As MakeDefaultButton, for the project reader: when the built-in record
// would give the labels the button's free name, the labels are left for
// the caller and *labelsPending says so. The reader overwrites them from
// the line in all but truncated lines, so the costly name search is
// skipped where it cannot show.
RecordResult MakeDefaultButtonDeferred(Project& p, Env& env, int i, bool keepNumberName,
                                       const std::string& key, int* labelsPending);

// Stores the record of Btn(i) in Params under `key` ("" = "sDefaultBtn").
bool WriteToREgistry(Project& p, Env& env, int i, const std::string& key = "");

// The add path shared by every command that creates a button: refuses at
// 1001 buttons with the limit message, otherwise appends a button made
// from the default record and makes it current. Returns the new number,
// 0 when refused, -1 when the process must end (damaged default record).
int AddNewButton(Project& p, Env& env);

}  // namespace kp

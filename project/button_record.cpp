#include "project/button_record.h"

#include "core/conv.h"
#include "core/messages.h"
#include "core/settings.h"
#include "project/button_line.h"
#include "project/fields.h"

namespace kp {

const char* const kBuiltInDefaultButton =
    "0|0|100|40||||||_self|1||1||||8388608|16711680|16711680|16777215|16777215|16777215|arial|"
    "arial|arial|1|1|1|10|10|10||||0|0|0|0|0|0|24|25|24|25|25|25|0|||||1|1|2|7|7|7|25|25|25|1|1|"
    "1|8388608|16711680|16711680|0|0|0|32768|8421504|0|0|0|0|0|0|0|0|0|0|65535|65535|65535|0|0|"
    "0|255|255|255|0|0|0|UnNamed|0|0|0|0|0|0|0|0|0|0|0|0|0||||";

std::string ButtonRecordText(const tButton& b) {
  std::string out;
  out.reserve(512);
  AppendButtonLine(out, b, LineForm::Record);
  return out;
}

namespace {

// Restored: the process ends, as it always has. Not restored (a store that
// cannot be written): asking for a restart would only show the same damage
// again, so the built-in record is held in memory and the run goes on.
bool RestoreDamagedDefault(Env& env) {
  env.prompter.MsgBox(SharedText("sRegistryCorrupted"));
  std::string failure = env.store.Set(kSecParams, "sDefaultBtn", kBuiltInDefaultButton);
  // Only a restore that reached the disk makes a restart worth asking for.
  if (failure.empty()) failure = env.store.Flush();
  if (failure.empty()) {
    env.store.Release(kSecParams, "sDefaultBtn");
    env.prompter.MsgBox(SharedText("sSettingsRestored"));
    return true;
  }
  env.store.Hold(kSecParams, "sDefaultBtn", "-1");
  env.prompter.MsgBox(SharedText("sDefaultRecordNotWritten", {env.store.Where(), failure}),
                      Buttons::OK, "", Icon::Critical);
  return false;
}

}  // namespace

RecordResult MakeDefaultButton(Project& p, Env& env, int i, bool keepNumberName,
                               const std::string& key) {
  return MakeDefaultButtonDeferred(p, env, i, keepNumberName, key, nullptr);
}

RecordResult MakeDefaultButtonDeferred(Project& p, Env& env, int i, bool keepNumberName,
                                       const std::string& key, int* labelsPending) {
  if (labelsPending) *labelsPending = 0;
  const std::string name = key.empty() ? "sDefaultBtn" : key;
  std::string text = fReadValue(env, kSecParams, name, "-1");
  if (!key.empty() && text == "-1") return RecordResult::NothingStored;
  const bool builtIn = text == "-1";
  if (builtIn) text = kBuiltInDefaultButton;
  // A record without a single "|" applies nothing at all, the name included.
  if (text.find('|') == std::string::npos) return RecordResult::Applied;

  tButton& b = p.button(i);
  int labelsSeen = 0;
  bool ok = ForEachField(text, [&](int no, std::string_view f) {
    if (no >= 4 && no <= 6) ++labelsSeen;
    return ApplyRecordButtonField(b, no, f, builtIn);
  });
  if (!ok) {
    if (RestoreDamagedDefault(env)) return RecordResult::ProcessEnds;
    // A damaged clipboard stays unpasted; the button takes the default,
    // whose every field overwrites what the damaged text had applied.
    if (!key.empty()) env.store.Hold(kSecParams, name, "-1");
    return MakeDefaultButtonDeferred(p, env, i, keepNumberName, "", labelsPending);
  }

  // The free name is only worked out where it is used: it costs a pass over
  // every button.
  if (builtIn && labelsSeen > 0 && labelsPending) {
    *labelsPending = labelsSeen;
  } else if (builtIn && labelsSeen > 0) {
    std::string free = Get_FREE_sBName(p, i);
    for (int s = 1; s <= labelsSeen; ++s) b.Label[s] = free;
  }
  b.sBName = keepNumberName ? std::to_string(i) : Get_FREE_sBName(p, i);
  return RecordResult::Applied;
}

bool WriteToREgistry(Project& p, Env& env, int i, const std::string& key) {
  std::string failure = env.store.Set(kSecParams, key.empty() ? "sDefaultBtn" : key,
                                      ButtonRecordText(p.button(i)));
  const std::string name = key.empty() ? "sDefaultBtn" : key;
  if (failure.empty()) {
    env.store.Release(kSecParams, name);
    return true;
  }
  env.prompter.MsgBox(SharedText("sWriteToRegistryError", {std::to_string(i), failure}));
  // The copy still works until the program ends.
  env.store.Hold(kSecParams, name, ButtonRecordText(p.button(i)));
  return false;
}

int AddNewButton(Project& p, Env& env) {
  if (!CanAddButton(p)) {
    env.prompter.MsgBox(Lang().TooManyButtons);
    return 0;
  }
  p.bProjectSaved = false;
  ++p.ButtonCount;
  p.iCurBtn = p.ButtonCount;
  p.button(p.iCurBtn) = tButton{};
  // The record does not carry the type; every button made now is current.
  p.button(p.iCurBtn).iBtnType = 5;
  if (MakeDefaultButton(p, env, p.iCurBtn, false) == RecordResult::ProcessEnds) return -1;
  return p.iCurBtn;
}

}  // namespace kp

// The button text record on arbitrary bytes, as stored default button and
// as clipboard: it applies, reports nothing stored, or ends in the restore
// path; never anything else.
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/env.h"
#include "core/settings.h"
#include "project/button_record.h"

namespace {

class Silent : public kp::Prompter {
 public:
  int boxes = 0;
  kp::Answer MsgBox(const std::string&, kp::Buttons, const std::string&, kp::Icon) override {
    ++boxes;
    return kp::Answer::OK;
  }
  bool Notice(const std::string&, const std::string&, const std::string&, bool c) override {
    return c;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kp::DiskFileSystem fs;
  kp::MemorySettings store;
  Silent prompter;
  kp::ProjectView view;
  kp::Env env{fs, store, prompter, view, "/mem"};
  std::string input(reinterpret_cast<const char*>(data), size);

  kp::Project p;
  p.ButtonCount = 2;
  store.Set(kp::kSecParams, "sDefaultBtn", input);
  kp::RecordResult r = kp::MakeDefaultButton(p, env, 1, false, "");
  if (r == kp::RecordResult::NothingStored) __builtin_trap();  // only a named key can be empty
  if (r == kp::RecordResult::ProcessEnds) {
    // The restore put the built-in record back, and it must apply cleanly.
    if (prompter.boxes != 2) __builtin_trap();
    if (kp::MakeDefaultButton(p, env, 2, false, "") != kp::RecordResult::Applied) __builtin_trap();
    return 0;
  }
  // A record that applied writes a record that applies to the same button.
  std::string text = kp::ButtonRecordText(p.button(1));
  store.Set(kp::kSecParams, "_buffer", text);
  if (kp::MakeDefaultButton(p, env, 2, false, "_buffer") != kp::RecordResult::Applied)
    __builtin_trap();
  kp::tButton a = p.button(1), b = p.button(2);
  a.x = b.x; a.y = b.y; a.sBName = b.sBName; a.iBtnType = b.iBtnType;
  // Fields that the record keeps as their escape text may differ: compare
  // the records, not the buttons.
  if (kp::ButtonRecordText(a) != kp::ButtonRecordText(b)) __builtin_trap();
  return 0;
}

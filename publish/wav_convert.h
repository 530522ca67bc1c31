// The converter window's work: WAV files handed one by one to the converter
// beside the program, each waited for, each with its own outcome. Unlike
// the button panel's pick, nothing is trusted to appear later.
#pragma once

#include <string>
#include <vector>

#include "core/env.h"

namespace kp {

struct WavConversion {
  std::string wav;
  std::string au;      // the file beside it, once written
  std::string reason;  // why it is not there; "" when converted
  bool ok() const { return reason.empty(); }
};

// The AU name the converter writes: "a.wav" -> "a.au", another name gets
// ".au" added.
std::string ConvertedName(const std::string& wav);

// The converter's word on a failure: its last line, without the tool's
// name and the path it was given in front.
std::string ConverterReason(const std::string& errors, const std::string& wav);

WavConversion ConvertWav(Env& env, const std::string& wav);
std::vector<WavConversion> ConvertWavs(Env& env, const std::vector<std::string>& wavs);

}  // namespace kp

#include "publish/wav_convert.h"

#include "core/conv.h"
#include "core/launcher.h"
#include "publish/sound.h"

namespace kp {

std::string ConvertedName(const std::string& wav) {
  return EndsWith(wav, ".wav", true) ? AuNameFor(wav) : wav + ".au";
}

std::string ConverterReason(const std::string& errors, const std::string& wav) {
  std::string last;
  size_t start = 0;
  while (start < errors.size()) {
    size_t end = errors.find('\n', start);
    if (end == std::string::npos) end = errors.size();
    std::string line = errors.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) last = line;
    start = end + 1;
  }
  for (const std::string& prefix : {"w2a: " + wav + ": ", std::string("w2a: ")})
    if (last.rfind(prefix, 0) == 0) return last.substr(prefix.size());
  return last;
}

WavConversion ConvertWav(Env& env, const std::string& wav) {
  WavConversion r{wav, ConvertedName(wav), ""};
  if (!env.launcher) {
    r.reason = "No program can be started here.";
    return r;
  }
  std::string errors;
  IoStatus s = env.launcher->RunForErrors(ConverterPath(env), {wav}, errors);
  if (!s) {
    r.reason = ConverterReason(errors, wav);
    if (r.reason.empty()) r.reason = s.message;
    // A converter that did not start at all: say which one.
    if (r.reason.find(ConverterPath(env)) == std::string::npos && errors.empty())
      r.reason = ConverterPath(env) + ": " + r.reason;
  } else if (!env.fs.FileExists(r.au)) {
    r.reason = "the converter wrote no AU file";
  }
  return r;
}

std::vector<WavConversion> ConvertWavs(Env& env, const std::vector<std::string>& wavs) {
  std::vector<WavConversion> out;
  for (const std::string& wav : wavs) out.push_back(ConvertWav(env, wav));
  return out;
}

}  // namespace kp

// w2a FILE.wav
//
// Converts an 8-bit or 16-bit PCM WAV file to a Sun AU file of the same name
// with the extension ".au", in the same folder, keeping the sample rate,
// the channels and the sample size (8-bit linear or 16-bit linear AU,
// big-endian). Anything else is refused with a message on stderr and a
// non-zero exit.
//
// The designer starts this tool and does not wait; it then waits for the AU
// file itself. The file is written under a temporary name and renamed when
// complete, so the designer never copies half a file.
//
// Exit codes: 0 converted, 1 the file could not be read or converted,
// 2 usage.
#include <sndfile.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

bool EndsWithNoCase(const std::string& text, const std::string& suffix) {
  if (text.size() < suffix.size()) return false;
  for (size_t i = 0; i < suffix.size(); ++i) {
    char a = text[text.size() - suffix.size() + i];
    char b = suffix[i];
    if (a >= 'A' && a <= 'Z') a = static_cast<char>(a - 'A' + 'a');
    if (b >= 'A' && b <= 'Z') b = static_cast<char>(b - 'A' + 'a');
    if (a != b) return false;
  }
  return true;
}

// "sound.wav" -> "sound.au", as the designer expects: the last three
// characters become "au". Another name gets ".au" added.
std::string AuPathFor(const std::string& wav) {
  if (EndsWithNoCase(wav, ".wav")) return wav.substr(0, wav.size() - 3) + "au";
  return wav + ".au";
}

int Fail(const std::string& path, const std::string& why) {
  std::fprintf(stderr, "w2a: %s: %s\n", path.c_str(), why.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || argv[1][0] == '\0') {
    std::fprintf(stderr,
                 "usage: w2a FILE.wav\n"
                 "Converts an 8-bit or 16-bit PCM WAV file to FILE.au beside it.\n");
    return 2;
  }
  const std::string in = argv[1];
  const std::string out = AuPathFor(in);
  const std::string temp = out + ".w2a-tmp";

  SF_INFO info{};
  SNDFILE* src = sf_open(in.c_str(), SFM_READ, &info);
  if (!src) return Fail(in, sf_strerror(nullptr));

  const int major = info.format & SF_FORMAT_TYPEMASK;
  const int sub = info.format & SF_FORMAT_SUBMASK;
  if ((major != SF_FORMAT_WAV && major != SF_FORMAT_WAVEX) ||
      (sub != SF_FORMAT_PCM_U8 && sub != SF_FORMAT_PCM_16)) {
    sf_close(src);
    return Fail(in, "not an 8-bit or 16-bit PCM WAV file");
  }

  SF_INFO outInfo{};
  outInfo.samplerate = info.samplerate;
  outInfo.channels = info.channels;
  outInfo.format = SF_FORMAT_AU | SF_ENDIAN_BIG |
                   (sub == SF_FORMAT_PCM_U8 ? SF_FORMAT_PCM_S8 : SF_FORMAT_PCM_16);
  if (!sf_format_check(&outInfo)) {
    sf_close(src);
    return Fail(in, "this sample rate or channel count cannot be written as AU");
  }
  SNDFILE* dst = sf_open(temp.c_str(), SFM_WRITE, &outInfo);
  if (!dst) {
    sf_close(src);
    return Fail(out, sf_strerror(nullptr));
  }

  // Shorts carry both sizes exactly: an 8-bit sample is read as value * 256
  // and written back as value.
  const sf_count_t kFrames = 4096;
  std::vector<short> buffer(static_cast<size_t>(kFrames * info.channels));
  std::string error;
  for (;;) {
    sf_count_t got = sf_readf_short(src, buffer.data(), kFrames);
    if (got < 0) {
      error = sf_strerror(src);
      break;
    }
    if (got == 0) break;
    if (sf_writef_short(dst, buffer.data(), got) != got) {
      error = sf_strerror(dst);
      break;
    }
    if (got < kFrames) break;
  }
  if (error.empty() && sf_error(src) != SF_ERR_NO_ERROR) error = sf_strerror(src);
  sf_close(src);
  if (sf_close(dst) != 0 && error.empty()) error = "the AU file could not be completed";
  if (!error.empty()) {
    std::remove(temp.c_str());
    return Fail(in, error);
  }
  if (std::rename(temp.c_str(), out.c_str()) != 0) {
    std::remove(temp.c_str());
    return Fail(out, "the AU file could not be put in place");
  }
  return 0;
}

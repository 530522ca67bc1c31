// The converter beside the program: 8-bit and 16-bit PCM WAV in, Sun AU
// out, anything else refused.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "core/launcher.h"
#include "core/settings.h"
#include "publish/build.h"
#include "publish/sound.h"
#include "publish/wav_convert.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::TempDir;

const std::string kTool = std::string(KP_BINARY_DIR) + "/bin/Tools/W2A/w2a";

void Put16(std::string& s, uint16_t v) {
  s.push_back(static_cast<char>(v & 0xFF));
  s.push_back(static_cast<char>(v >> 8));
}
void Put32(std::string& s, uint32_t v) {
  for (int i = 0; i < 4; ++i) s.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

// A WAV file: format tag 1 (PCM) or 3 (float), the sample bytes as given.
std::string Wav(uint16_t format, uint16_t channels, uint32_t rate, uint16_t bits,
                const std::string& data) {
  std::string s = "RIFF";
  Put32(s, static_cast<uint32_t>(36 + data.size()));
  s += "WAVEfmt ";
  Put32(s, 16);
  Put16(s, format);
  Put16(s, channels);
  Put32(s, rate);
  Put32(s, rate * channels * bits / 8);
  Put16(s, static_cast<uint16_t>(channels * bits / 8));
  Put16(s, bits);
  s += "data";
  Put32(s, static_cast<uint32_t>(data.size()));
  return s + data;
}

uint32_t Big32(const std::string& s, size_t at) {
  return (uint32_t(uint8_t(s[at])) << 24) | (uint32_t(uint8_t(s[at + 1])) << 16) |
         (uint32_t(uint8_t(s[at + 2])) << 8) | uint32_t(uint8_t(s[at + 3]));
}

struct Au {
  uint32_t offset = 0, size = 0, encoding = 0, rate = 0, channels = 0;
  std::string data;
};

Au ReadAu(const std::string& bytes) {
  Au a;
  EXPECT_GE(bytes.size(), 24u);
  if (bytes.size() < 24) return a;
  EXPECT_EQ(bytes.substr(0, 4), ".snd");
  a.offset = Big32(bytes, 4);
  a.size = Big32(bytes, 8);
  a.encoding = Big32(bytes, 12);
  a.rate = Big32(bytes, 16);
  a.channels = Big32(bytes, 20);
  if (a.offset <= bytes.size()) a.data = bytes.substr(a.offset);
  return a;
}

int RunTool(const std::string& arg) {
  std::string quoted = "'" + kTool + "' '" + arg + "' 2>/dev/null";
  int status = std::system(quoted.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class W2A : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kTool)) GTEST_SKIP() << "w2a was not built (no libsndfile)";
  }
  TempDir dir;
};

TEST_F(W2A, EightBitMonoGivesEightBitLinearAuWithTheSameSamples) {
  std::string samples;
  for (int i = 0; i < 300; ++i) samples.push_back(static_cast<char>((i * 7) & 0xFF));
  dir.write("s.wav", Wav(1, 1, 8000, 8, samples));
  ASSERT_EQ(RunTool(dir.file("s.wav")), 0);
  Au au = ReadAu(dir.read("s.au"));
  EXPECT_EQ(au.encoding, 2u);  // 8-bit linear PCM
  EXPECT_EQ(au.rate, 8000u);
  EXPECT_EQ(au.channels, 1u);
  EXPECT_EQ(au.size, samples.size());
  ASSERT_EQ(au.data.size(), samples.size());
  // WAV bytes are unsigned, AU bytes signed: the same sound is 128 apart.
  for (size_t i = 0; i < samples.size(); ++i)
    ASSERT_EQ(static_cast<int8_t>(au.data[i]), static_cast<int>(uint8_t(samples[i])) - 128) << i;
}

TEST_F(W2A, EightBitStereoKeepsTheChannelsInterleaved) {
  std::string samples;
  for (int i = 0; i < 200; ++i) {
    samples.push_back(static_cast<char>(i));
    samples.push_back(static_cast<char>(255 - i));
  }
  dir.write("st.wav", Wav(1, 2, 11025, 8, samples));
  ASSERT_EQ(RunTool(dir.file("st.wav")), 0);
  Au au = ReadAu(dir.read("st.au"));
  EXPECT_EQ(au.encoding, 2u);
  EXPECT_EQ(au.rate, 11025u);
  EXPECT_EQ(au.channels, 2u);
  ASSERT_EQ(au.data.size(), samples.size());
  for (size_t i = 0; i < samples.size(); ++i)
    ASSERT_EQ(static_cast<int8_t>(au.data[i]), static_cast<int>(uint8_t(samples[i])) - 128) << i;
}

void CheckSixteenBit(TempDir& dir, uint16_t channels, uint32_t rate) {
  std::vector<int16_t> values;
  for (int i = 0; i < 500; ++i) values.push_back(static_cast<int16_t>(i * 131 - 32768 + (i % 3)));
  values.push_back(32767);
  values.push_back(-32768);
  if (values.size() % channels) values.push_back(0);
  std::string samples;
  for (int16_t v : values) Put16(samples, static_cast<uint16_t>(v));
  dir.write("w.wav", Wav(1, channels, rate, 16, samples));
  ASSERT_EQ(RunTool(dir.file("w.wav")), 0);
  Au au = ReadAu(dir.read("w.au"));
  EXPECT_EQ(au.encoding, 3u);  // 16-bit linear PCM
  EXPECT_EQ(au.rate, rate);
  EXPECT_EQ(au.channels, channels);
  EXPECT_EQ(au.size, samples.size());
  ASSERT_EQ(au.data.size(), samples.size());
  for (size_t i = 0; i < values.size(); ++i) {
    // Big-endian in the AU file.
    int16_t got =
        static_cast<int16_t>((uint8_t(au.data[2 * i]) << 8) | uint8_t(au.data[2 * i + 1]));
    ASSERT_EQ(got, values[i]) << i;
  }
}

TEST_F(W2A, SixteenBitMonoGivesSixteenBitBigEndianAuWithTheSameSamples) {
  CheckSixteenBit(dir, 1, 22050);
}

TEST_F(W2A, SixteenBitStereoGivesSixteenBitBigEndianAuWithTheSameSamples) {
  CheckSixteenBit(dir, 2, 44100);
}

TEST_F(W2A, UpperCaseWavExtensionGivesTheLowerCaseAuTheDesignerExpects) {
  dir.write("LOUD.WAV", Wav(1, 1, 8000, 8, std::string(10, '\x80')));
  ASSERT_EQ(RunTool(dir.file("LOUD.WAV")), 0);
  EXPECT_TRUE(std::filesystem::exists(dir.file("LOUD.au")));
  EXPECT_EQ(test::FilesIn(dir.path()), (std::vector<std::string>{"LOUD.WAV", "LOUD.au"}));
}

TEST_F(W2A, FloatWavFailsAndWritesNothing) {
  std::string samples(400, '\0');
  dir.write("f.wav", Wav(3, 1, 8000, 32, samples));
  EXPECT_NE(RunTool(dir.file("f.wav")), 0);
  EXPECT_EQ(test::FilesIn(dir.path()), std::vector<std::string>{"f.wav"});
}

TEST_F(W2A, TwentyFourBitPcmFails) {
  dir.write("d.wav", Wav(1, 1, 8000, 24, std::string(300, '\x10')));
  EXPECT_NE(RunTool(dir.file("d.wav")), 0);
  EXPECT_FALSE(std::filesystem::exists(dir.file("d.au")));
}

TEST_F(W2A, GarbageAndMissingFilesFail) {
  dir.write("g.wav", "this is not a sound at all, only some text");
  EXPECT_NE(RunTool(dir.file("g.wav")), 0);
  EXPECT_FALSE(std::filesystem::exists(dir.file("g.au")));
  EXPECT_NE(RunTool(dir.file("missing.wav")), 0);
}

TEST_F(W2A, WrongNumberOfArgumentsIsAUsageError) {
  int status = std::system(("'" + kTool + "' 2>/dev/null").c_str());
  EXPECT_EQ(WEXITSTATUS(status), 2);
  status = std::system(("'" + kTool + "' a.wav b.wav 2>/dev/null").c_str());
  EXPECT_EQ(WEXITSTATUS(status), 2);
}

// The designer with the real converter in its program folder.
struct DesignerWithConverter : test::Pub {
  PosixLauncher real;
  DesignerWithConverter() {
    std::filesystem::create_directories(t.home.file("Tools/W2A"));
    std::filesystem::create_symlink(kTool, t.home.file("Tools/W2A/w2a"));
    env.launcher = &real;
    SetParam(env, "WAV2AU_Auto_Convertion", "0");
  }
};

bool AppearsWithin(const std::string& path, int ms) {
  for (int waited = 0; waited < ms; waited += 50) {
    if (std::filesystem::exists(path)) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return std::filesystem::exists(path);
}

TEST_F(W2A, PickedPcmWavIsConvertedInTheBackgroundAndBuiltAsAu) {
  DesignerWithConverter f;
  dir.write("beep.wav", Wav(1, 1, 8000, 8, std::string(800, '\x90')));
  f.prompter().openAnswers = {dir.file("beep.wav")};
  const std::string name = btnGetSound_Click(f.c);
  EXPECT_EQ(name, dir.file("beep.au"));
  ASSERT_TRUE(AppearsWithin(name, 5000));
  int b = f.AddButton("One");
  f.p.button(b).Snd[2] = name;
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(r.media.copied, 1);
  EXPECT_EQ(ReadAu(out.read("beep.au")).data, std::string(800, '\x10'));
}

TEST_F(W2A, NonPcmWavLeavesANameThatNeverComesAndTheBuildReportsIt) {
  DesignerWithConverter f;
  dir.write("float.wav", Wav(3, 1, 8000, 32, std::string(400, '\0')));
  f.prompter().openAnswers = {dir.file("float.wav")};
  const std::string name = btnGetSound_Click(f.c);
  // The tool fails without a word to the designer.
  EXPECT_EQ(name, dir.file("float.au"));
  EXPECT_TRUE(f.prompter().shown.empty());
  EXPECT_FALSE(AppearsWithin(name, 1000));
  int b = f.AddButton("One");
  f.p.button(b).Snd[1] = name;
  f.Generate();
  TempDir out;
  f.prompter().saveAnswers = {out.file("page.html")};
  BuildReport r = BuildApplet(f.c, true);
  EXPECT_EQ(f.clock.Slept(), std::chrono::seconds(6));
  EXPECT_EQ(r.media.reported, 1);
  ASSERT_EQ(f.Messages().size(), 1u);
  EXPECT_EQ(f.Messages()[0].text.rfind("Can't copy Sound for Button # 1\r\n\r\n" + name, 0), 0u);
}

// The converter window's road: the tool run and waited for, its own word
// kept on a failure.
TEST_F(W2A, ConvertWavWaitsForTheToolAndKeepsItsReasonOnFailure) {
  test::TestEnv t;
  std::filesystem::create_directories(t.home.path() + "/Tools/W2A");
  std::filesystem::create_symlink(kTool, t.home.path() + "/Tools/W2A/w2a");
  PosixLauncher launcher;
  t.env.launcher = &launcher;
  dir.write("one.wav", Wav(1, 1, 8000, 16, std::string(400, '\x01')));
  dir.write("two.WAV", Wav(1, 2, 11025, 8, std::string(300, '\x80')));
  dir.write("float.wav", Wav(3, 1, 8000, 32, std::string(64, '\0')));
  std::vector<WavConversion> r =
      ConvertWavs(t.env, {dir.file("one.wav"), dir.file("two.WAV"), dir.file("float.wav")});
  ASSERT_EQ(r.size(), 3u);
  EXPECT_TRUE(r[0].ok()) << r[0].reason;
  EXPECT_EQ(r[0].au, dir.file("one.au"));
  EXPECT_EQ(ReadAu(dir.read("one.au")).encoding, 3u);  // 16-bit linear
  EXPECT_TRUE(r[1].ok()) << r[1].reason;
  EXPECT_EQ(r[1].au, dir.file("two.au"));
  EXPECT_EQ(ReadAu(dir.read("two.au")).channels, 2u);
  EXPECT_FALSE(r[2].ok());
  EXPECT_EQ(r[2].reason, "not an 8-bit or 16-bit PCM WAV file");
  EXPECT_FALSE(std::filesystem::exists(dir.file("float.au")));
}

TEST(ConvertWav, AMissingConverterIsNamedInTheReason) {
  test::TestEnv t;
  PosixLauncher launcher;
  t.env.launcher = &launcher;
  WavConversion r = ConvertWav(t.env, "/nowhere/a.wav");
  EXPECT_FALSE(r.ok());
  EXPECT_EQ(r.reason, ConverterPath(t.env) + ": No such file or directory");
}

TEST(ConverterReason, TakesTheLastLineWithoutTheToolAndPath) {
  EXPECT_EQ(ConverterReason("w2a: /a/b.wav: bad header\n", "/a/b.wav"), "bad header");
  EXPECT_EQ(ConverterReason("first\nw2a: other: why\n\n", "/a/b.wav"), "other: why");
  EXPECT_EQ(ConverterReason("", "/a/b.wav"), "");
  EXPECT_EQ(ConvertedName("x/y.Wav"), "x/y.au");
  EXPECT_EQ(ConvertedName("x/y.snd"), "x/y.snd.au");
}

}  // namespace
}  // namespace kp

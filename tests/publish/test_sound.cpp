#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "publish/sound.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::Pub;
using test::TempDir;

const std::string kCRLF = "\r\n";

TEST(GetSound, UpperCaseWavBecomesALowerCaseAuAndStartsTheConverterDetached) {
  Pub f;
  TempDir d;
  d.write("A.WAV", "x");
  f.prompter().openAnswers = {d.file("A.WAV")};
  EXPECT_EQ(btnGetSound_Click(f.c), d.file("A.au"));
  ASSERT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_EQ(f.launcher.calls[0].verb, "run");
  EXPECT_EQ(f.launcher.calls[0].program, f.t.home.path() + "/Tools/W2A/w2a");
  EXPECT_EQ(f.launcher.calls[0].args, std::vector<std::string>{d.file("A.WAV")});
  EXPECT_TRUE(f.launcher.calls[0].detached);
}

TEST(GetSound, TheNoticeComesFirstWithTheProgramsText) {
  Pub f;
  f.prompter().openAnswers = {"/snd/x.wav"};
  btnGetSound_Click(f.c);
  ASSERT_EQ(f.prompter().shown.size(), 1u);
  const auto& n = f.prompter().shown[0];
  EXPECT_EQ(n.kind, "notice");
  EXPECT_EQ(n.title, "Wav to Au convertion");
  EXPECT_EQ(n.text,
            "Kestrel Pane will run W2A utility to convert WAV file to AU type, because Java does "
            "not support WAV files." +
                kCRLF + kCRLF + "Only WAV files in PCM format can be converted." + kCRLF + kCRLF +
                "Please see Tools/W2A/ReadMe.txt for more information.");
}

TEST(GetSound, AnAuFileStartsNothingAndShowsNothing) {
  Pub f;
  f.prompter().openAnswers = {"/snd/click.au"};
  EXPECT_EQ(btnGetSound_Click(f.c), "/snd/click.au");
  EXPECT_TRUE(f.launcher.calls.empty());
  EXPECT_TRUE(f.prompter().shown.empty());
}

TEST(GetSound, WithTheSettingAtZeroTheConversionRunsWithoutANotice) {
  Pub f;
  SetParam(f.env, "WAV2AU_Auto_Convertion", "0");
  f.prompter().openAnswers = {"/snd/x.Wav"};
  EXPECT_EQ(btnGetSound_Click(f.c), "/snd/x.au");
  EXPECT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_TRUE(f.prompter().shown.empty());
}

TEST(GetSound, UntickingTheNoticeTurnsItOff) {
  Pub f;
  f.prompter().openAnswers = {"/snd/x.wav"};
  f.prompter().noticeAnswers = {false};
  btnGetSound_Click(f.c);
  EXPECT_EQ(GetParam(f.env, "WAV2AU_Auto_Convertion"), "0");
}

TEST(GetSound, AConverterThatCannotStartIsToldAndTheNameStaysTheWav) {
  Pub f;
  f.launcher.fail = true;
  SetParam(f.env, "WAV2AU_Auto_Convertion", "0");
  f.prompter().openAnswers = {"/snd/x.wav"};
  EXPECT_EQ(btnGetSound_Click(f.c), "/snd/x.wav");
  auto msgs = f.Messages();
  ASSERT_EQ(msgs.size(), 1u);
  EXPECT_EQ(msgs[0].title, "Error");
  EXPECT_EQ(msgs[0].text, "There was an error when trying to convert WAV file to AU:" + kCRLF +
                              "No such file or directory" + kCRLF + kCRLF +
                              "Please see Tools/W2A/ReadMe.txt");
}

TEST(GetSound, DialogStartsInTheSoundsFolderAndRemembersTheNewOne) {
  Pub f;
  f.p.sSearchSoundsFolder = "/start/here";
  f.prompter().openAnswers = {"/picked/there/s.au"};
  btnGetSound_Click(f.c);
  ASSERT_EQ(f.prompter().fileDialogs.size(), 1u);
  const FileDialog& d = f.prompter().fileDialogs[0];
  EXPECT_EQ(d.folder, "/start/here");
  EXPECT_EQ(d.filter,
            "All supported Audio Files (*.au, *.wav)|*.au;*.wav| Wav Files (*.wav)|*.wav| Sun's "
            "Audio (*.au)|*.au| All Files (*.*)|*.*");
  EXPECT_TRUE(d.fileMustExist);
  EXPECT_EQ(f.p.sSearchSoundsFolder, "/picked/there/");
  EXPECT_EQ(GetParam(f.env, "sSearchSoundsFolder"), "/picked/there/");
}

TEST(GetSound, CancelledDialogChangesNothing) {
  Pub f;
  f.p.sSearchSoundsFolder = "/start/here";
  EXPECT_EQ(btnGetSound_Click(f.c), "");
  EXPECT_EQ(f.p.sSearchSoundsFolder, "/start/here");
  EXPECT_TRUE(f.launcher.calls.empty());
}

TEST(SoundTools, MissingInteractiveToolIsToldWithItsPath) {
  Pub f;
  f.launcher.fail = true;
  EXPECT_FALSE(mnuWav2Au_Click(f.env));
  EXPECT_EQ(f.Messages()[0].text, f.t.home.path() + "/Tools/Wav2Au not found.");
}

TEST(SoundTools, ReadMeIsOpenedWithTheDesktopsOpener) {
  Pub f;
  EXPECT_TRUE(mnuWav2Au_ReadMe_Click(f.env));
  ASSERT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_EQ(f.launcher.calls[0].verb, "open");
  EXPECT_EQ(f.launcher.calls[0].args[0], f.t.home.path() + "/Tools/Wav2Au_ReadMe.txt");
  f.launcher.fail = true;
  EXPECT_FALSE(mnuWav2Au_ReadMe_Click(f.env));
  EXPECT_EQ(f.Messages()[0].text, "No such file or directory");
}

TEST(SoundTools, ReadMeFilesShipInTheProgramFolder) {
  EXPECT_FALSE(test::ReadBytes(test::SourcePath("data/Tools/Wav2Au_ReadMe.txt")).empty());
  EXPECT_FALSE(test::ReadBytes(test::SourcePath("data/Tools/W2A/ReadMe.txt")).empty());
}

TEST(AuNameFor, LastThreeCharactersBecomeAu) {
  EXPECT_EQ(AuNameFor("sound.wav"), "sound.au");
  EXPECT_EQ(AuNameFor("/x/A.WAV"), "/x/A.au");
}

}  // namespace
}  // namespace kp

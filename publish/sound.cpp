#include "publish/sound.h"

#include "core/conv.h"
#include "core/launcher.h"
#include "core/messages.h"
#include "core/settings.h"

namespace kp {

std::string ConverterPath(const Env& env) {
  return EndBackslash(env.programFolder) + "Tools/W2A/w2a";
}

std::string Wav2AuToolPath(const Env& env) {
  return EndBackslash(env.programFolder) + "Tools/Wav2Au";
}

std::string AuNameFor(const std::string& wavName) {
  if (wavName.size() < 3) return "au";
  return wavName.substr(0, wavName.size() - 3) + "au";
}

std::string btnGetSound_Click(PublishContext& c) {
  Project& p = c.p;
  Env& env = c.env;
  myChDir(env, p.sSearchSoundsFolder);
  FileDialog fd;
  fd.filter = kSoundFilter;
  fd.folder = p.sSearchSoundsFolder;
  fd.fileMustExist = true;
  fd.hideReadOnly = true;
  std::string name = env.prompter.OpenFileDialog(fd);
  if (name.empty()) return "";

  if (EndsWith(name, ".WAV", true)) {
    MyMsgBox(env, SharedText("sWavToAuTitle"), SharedText("sWavToAu"),
             SharedText("sShowMessageNextTime"), "WAV2AU_Auto_Convertion", "1", "0", "1");
    IoStatus started = env.launcher ? env.launcher->Run(ConverterPath(env), {name}, true)
                                    : IoStatus::Fail("No program can be started here.");
    if (started) {
      name = AuNameFor(name);
    } else {
      // The name stays the WAV name.
      env.prompter.MsgBox(SharedText("sWavToAuError", {started.message}), Buttons::OK,
                          SharedText("sErrorTitle"), Icon::Critical);
    }
  }

  p.sSearchSoundsFolder = GetFolder(name);
  SetParam(env, "sSearchSoundsFolder", p.sSearchSoundsFolder);
  return name;
}

bool mnuWav2Au_Click(Env& env) {
  IoStatus s = env.launcher ? env.launcher->Run(Wav2AuToolPath(env), {}, true) : IoStatus::Fail("");
  if (s) return true;
  env.prompter.MsgBox(SharedText("sToolNotFound", {Wav2AuToolPath(env)}));
  return false;
}

bool mnuWav2Au_ReadMe_Click(Env& env) {
  const std::string readMe = EndBackslash(env.programFolder) + "Tools/" + Lang().SoundReadMe;
  IoStatus s =
      env.launcher ? env.launcher->Open(readMe) : IoStatus::Fail("No program can be started here.");
  if (s) return true;
  env.prompter.MsgBox(s.message);
  return false;
}

}  // namespace kp

// Sound conversion: the applet plays AU files only, so a WAV file picked
// for a button is handed to the converter beside the program, which runs on
// its own and writes the AU file next to the WAV. From then on the program
// speaks of the AU file, trusting it to appear (the build waits for it).
#pragma once

#include <string>

#include "core/env.h"
#include "publish/context.h"

namespace kp {

inline constexpr const char* kSoundFilter =
    "All supported Audio Files (*.au, *.wav)|*.au;*.wav| Wav Files (*.wav)|*.wav| Sun's Audio "
    "(*.au)|*.au| All Files (*.*)|*.*";

// The converter (one argument, the WAV path) and the interactive tool.
std::string ConverterPath(const Env& env);
std::string Wav2AuToolPath(const Env& env);

// "sound.wav" -> "sound.au": the last three characters become "au".
std::string AuNameFor(const std::string& wavName);

// btnGetSound_Click: the name for txtSound, or "" when the dialog was
// cancelled (txtSound then stays as it is).
std::string btnGetSound_Click(PublishContext& c);

// The tools menu: the interactive converter, and its read-me opened with
// the desktop's opener. False after a failure message.
bool mnuWav2Au_Click(Env& env);
bool mnuWav2Au_ReadMe_Click(Env& env);

}  // namespace kp

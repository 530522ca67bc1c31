// The bytes of a project text as an edit box shows them, and back. The
// project's texts come from files written on another system: valid UTF-8
// shows as UTF-8, anything else byte by byte. A box gives its text back in
// the form the bytes had, so that editing one line of a Windows-1252 page
// head does not re-encode the others.
#pragma once

#include <QString>
#include <string>

namespace kp {

bool IsUtf8(const std::string& bytes);

// `shown` back as bytes: UTF-8 when `was` (the bytes the box was filled
// from) is UTF-8, otherwise one byte a character (characters beyond one
// byte become "?").
std::string BoxBytes(const QString& shown, const std::string& was);

// The code box keeps CR LF line ends; an edit box has single line feeds.
QString WithLineFeeds(const QString& text);
std::string WithCRLF(const std::string& text);

}  // namespace kp

#include "app/box_text.h"

#include <QStringDecoder>

namespace kp {

bool IsUtf8(const std::string& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  (void)utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  return !utf8.hasError();
}

std::string BoxBytes(const QString& shown, const std::string& was) {
  const QByteArray b = IsUtf8(was) ? shown.toUtf8() : shown.toLatin1();
  return std::string(b.constData(), static_cast<size_t>(b.size()));
}

QString WithLineFeeds(const QString& text) {
  QString s = text;
  s.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return s;
}

std::string WithCRLF(const std::string& text) {
  std::string out;
  out.reserve(text.size() + text.size() / 32);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) out += '\r';
    out += text[i];
  }
  return out;
}

}  // namespace kp

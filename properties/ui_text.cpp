#include "properties/ui_text.h"

#include <QStringDecoder>

namespace kp {

const std::string& TextOf(const UiTexts& table, std::string_view control) {
  for (const UiText& t : table)
    if (control == t.control) return t.text;
  static thread_local std::string missing;
  missing = std::string(control);
  return missing;
}

QString QTextOf(const UiTexts& table, std::string_view control) {
  return DisplayText(TextOf(table, control));
}

void ReplaceByPosition(UiTexts& table, const std::vector<std::string>& lines) {
  for (size_t i = 0; i < table.size() && i < lines.size(); ++i) table[i].text = lines[i];
}

QString DisplayText(const std::string& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString s = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (!utf8.hasError()) return s;
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::string PathBytes(const QString& path) {
  QByteArray b = path.toLocal8Bit();
  return std::string(b.constData(), static_cast<size_t>(b.size()));
}

QString PathText(const std::string& path) {
  return QString::fromLocal8Bit(path.data(), static_cast<qsizetype>(path.size()));
}

}  // namespace kp

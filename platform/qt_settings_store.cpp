#include "platform/qt_settings_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kp {

namespace {

QString Latin1(const std::string& s) {
  return QString::fromLatin1(s.data(), static_cast<qsizetype>(s.size()));
}

std::string Bytes(const QString& s) {
  QByteArray b = s.toLatin1();
  return std::string(b.constData(), static_cast<size_t>(b.size()));
}

QString KeyPath(const std::string& section, const std::string& key) {
  return section.empty() ? Latin1(key) : Latin1(section) + QLatin1Char('/') + Latin1(key);
}

}  // namespace

QtSettingsStore::QtSettingsStore()
    : settings_(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                            QStringLiteral("KestrelPane"),
                                            QStringLiteral("KestrelPane"))) {}

QtSettingsStore::QtSettingsStore(const std::string& iniPath) {
  const QString path =
      QString::fromLocal8Bit(iniPath.data(), static_cast<qsizetype>(iniPath.size()));
  if (!QFileInfo::exists(path)) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (f.open(QIODevice::WriteOnly)) f.close();
  }
  settings_ = std::make_unique<QSettings>(path, QSettings::IniFormat);
}

std::string QtSettingsStore::FileName() const { return settings_->fileName().toStdString(); }

std::string QtSettingsStore::Sync() {
  settings_->sync();
  switch (settings_->status()) {
    case QSettings::NoError:
      return "";
    case QSettings::AccessError:
      return "Access denied to the settings file " + FileName();
    case QSettings::FormatError:
      return "The settings file " + FileName() + " is not in a readable format";
  }
  return "Unknown settings store error";
}

std::optional<std::string> QtSettingsStore::Get(const std::string& section,
                                                const std::string& key) {
  const QString k = KeyPath(section, key);
  if (!settings_->contains(k)) return std::nullopt;
  return Bytes(settings_->value(k).toString());
}

std::string QtSettingsStore::Set(const std::string& section, const std::string& key,
                                 const std::string& value) {
  settings_->setValue(KeyPath(section, key), Latin1(value));
  return Sync();
}

std::string QtSettingsStore::SetMany(
    const std::string& section, const std::vector<std::pair<std::string, std::string>>& values) {
  for (const auto& [key, value] : values) settings_->setValue(KeyPath(section, key), Latin1(value));
  return Sync();
}

std::string QtSettingsStore::RemoveSection(const std::string& section) {
  // QSettings::remove("") would empty the whole store.
  if (section.empty()) return "No settings section given";
  settings_->remove(Latin1(section));
  return Sync();
}

}  // namespace kp

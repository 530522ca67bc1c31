#include "platform/qt_settings_store.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QTimer>

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

// QSettings writes its file by itself at the next event run after a
// change; the store decides when it is written (once an operation), so
// that request is dropped.
class NoAutoWrite : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject*, QEvent* e) override { return e->type() == QEvent::UpdateRequest; }
};

}  // namespace

QtSettingsStore::~QtSettingsStore() {
  const std::string failure = Flush();
  if (!failure.empty() && onWriteFailure) onWriteFailure(failure);
}

void QtSettingsStore::KeepWritesToItself() {
  settings_->installEventFilter(new NoAutoWrite(settings_.get()));
}

bool QtSettingsStore::Defer() {
  QCoreApplication* app = QCoreApplication::instance();
  if (!app || QThread::currentThread() != app->thread()) return false;
  if (!flushTimer_) {
    flushTimer_ = std::make_unique<QTimer>();
    flushTimer_->setSingleShot(true);
    flushTimer_->setInterval(0);
    QObject::connect(flushTimer_.get(), &QTimer::timeout, [this] {
      // A batch that let events run writes at its own end.
      if (InBatch()) return;
      const std::string failure = Flush();
      if (!failure.empty() && onWriteFailure) onWriteFailure(failure);
    });
  }
  if (!flushTimer_->isActive()) flushTimer_->start();
  return true;
}

QtSettingsStore::QtSettingsStore()
    : settings_(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                            QStringLiteral("KestrelPane"),
                                            QStringLiteral("KestrelPane"))) {
  CheckReadable();
  KeepWritesToItself();
}

QtSettingsStore::QtSettingsStore(const std::string& iniPath) {
  const QString path =
      QString::fromLocal8Bit(iniPath.data(), static_cast<qsizetype>(iniPath.size()));
  if (!QFileInfo::exists(path)) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (f.open(QIODevice::WriteOnly)) f.close();
  }
  settings_ = std::make_unique<QSettings>(path, QSettings::IniFormat);
  CheckReadable();
  KeepWritesToItself();
}

std::string QtSettingsStore::FileName() const { return settings_->fileName().toStdString(); }

std::string QtSettingsStore::Where() const { return "the settings file " + FileName(); }

void QtSettingsStore::CheckReadable() {
  const QString path = settings_->fileName();
  const QFileInfo info(path);
  const std::string name = FileName();
  // QSettings reads its file on first use; the status means nothing before.
  (void)settings_->childGroups();
  if (info.exists() && !info.isFile()) {
    readProblem_ = "The settings file " + name + " cannot be read: it is " +
                   (info.isDir() ? "a folder" : "not a regular file") + ".";
  } else if (QFile f(path); info.exists() && !f.open(QIODevice::ReadOnly)) {
    readProblem_ = "The settings file " + name + " cannot be read: " +
                   f.errorString().toStdString() + ".";
  } else if (settings_->status() == QSettings::FormatError) {
    readProblem_ = "The settings file " + name +
                   " is not a settings file: its text is not in the INI format.";
  } else if (settings_->status() == QSettings::AccessError) {
    readProblem_ = "The settings file " + name + " cannot be read.";
  }
  if (!readProblem_.empty()) memory_ = std::make_unique<MemorySettings>();
}

std::string QtSettingsStore::WriteRefusal() const {
  // As with every other file the program writes: one whose owner took all
  // write permission away is left alone, also by a user the system lets.
  const QFileInfo info(settings_->fileName());
  const auto anyWrite = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
  if (info.isFile() && !(info.permissions() & anyWrite))
    return "The settings file " + FileName() + " is write-protected (read-only).";
  return "";
}

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
  if (memory_) return memory_->Get(section, key);
  const QString k = KeyPath(section, key);
  if (!settings_->contains(k)) return std::nullopt;
  return Bytes(settings_->value(k).toString());
}

std::string QtSettingsStore::Set(const std::string& section, const std::string& key,
                                 const std::string& value) {
  if (memory_) return memory_->Set(section, key, value);
  if (std::string refusal = WriteRefusal(); !refusal.empty()) return refusal;
  settings_->setValue(KeyPath(section, key), Latin1(value));
  return Changed();
}

std::string QtSettingsStore::SetMany(
    const std::string& section, const std::vector<std::pair<std::string, std::string>>& values) {
  if (memory_) return memory_->SetMany(section, values);
  if (std::string refusal = WriteRefusal(); !refusal.empty()) return refusal;
  for (const auto& [key, value] : values) settings_->setValue(KeyPath(section, key), Latin1(value));
  return Changed();
}

std::string QtSettingsStore::RemoveSection(const std::string& section) {
  // QSettings::remove("") would empty the whole store.
  if (section.empty()) return "No settings section given";
  if (memory_) return memory_->RemoveSection(section);
  if (std::string refusal = WriteRefusal(); !refusal.empty()) return refusal;
  settings_->remove(Latin1(section));
  return Changed();
}

}  // namespace kp

#include "properties/frm_wav2au.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "core/conv.h"
#include "properties/window_lang.h"
#include "publish/sound.h"

namespace kp {

// The order is the order of the "[frmWav2Au]" section of a language file.
UiTexts& frmWav2Au::Texts() {
  static UiTexts t = {
      {"frmWav2Au", "Wav to Au Converter"},
      {"lblInfo",
       "Only WAV files in PCM format (8 or 16 bit) can be converted. Each AU file is written "
       "beside its WAV file, with the same name."},
      {"colFile", "WAV file"},
      {"colResult", "Result"},
      {"btnChoose", "&Convert WAV Files..."},
      {"btnReadMe", "&ReadMe"},
      {"btnClose", "&Close"},
      {"sDialogTitle", "WAV files to convert"},
      {"sFilter", "Wav Files (*.wav)|*.wav|All Files (*.*)|*.*"},
      {"sConverted", "OK: "},
      {"sFailed", "Failed: "},
  };
  return t;
}

frmWav2Au::frmWav2Au(QWidget* mainWindow, Env& env) : QWidget(mainWindow, Qt::Window), env_(env) {
  setObjectName("frmWav2Au");
  ApplyLanguageSection(env, Texts(), "[frmWav2Au]");
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmWav2Au"));
  lblInfo = NamedControl(new QLabel(QTextOf(t, "lblInfo"), this), "lblInfo");
  lblInfo->setWordWrap(true);
  lstResults = NamedControl(new QTreeWidget(this), "lstResults");
  lstResults->setHeaderLabels({QTextOf(t, "colFile"), QTextOf(t, "colResult")});
  lstResults->setRootIsDecorated(false);
  // The file's name matters more than the folders in front of it.
  lstResults->setTextElideMode(Qt::ElideLeft);
  lstResults->header()->setStretchLastSection(true);
  lstResults->setColumnWidth(0, 300);
  auto button = [this, &t](const char* name) {
    return NamedControl(new QPushButton(QTextOf(t, name), this), name);
  };
  btnChoose = button("btnChoose");
  btnReadMe = button("btnReadMe");
  btnClose = button("btnClose");
  connect(btnChoose, &QPushButton::clicked, this, [this] { btnChoose_Click(); });
  connect(btnReadMe, &QPushButton::clicked, this, [this] { btnReadMe_Click(); });
  connect(btnClose, &QPushButton::clicked, this, [this] { btnClose_Click(); });

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnChoose);
  buttons->addStretch();
  buttons->addWidget(btnReadMe);
  buttons->addWidget(btnClose);
  auto* box = new QVBoxLayout(this);
  box->addWidget(lblInfo);
  box->addWidget(lstResults, 1);
  box->addLayout(buttons);
  resize(640, 300);
}

void frmWav2Au::btnChoose_Click() {
  FileDialog fd;
  fd.title = TextOf(Texts(), "sDialogTitle");
  fd.filter = TextOf(Texts(), "sFilter");
  fd.folder = lastFolder_.empty() ? EndBackslash(env_.programFolder) + "Sounds" : lastFolder_;
  fd.fileMustExist = true;
  fd.hideReadOnly = true;
  const std::vector<std::string> wavs = env_.prompter.OpenFilesDialog(fd);
  if (wavs.empty()) return;
  lastFolder_ = GetFolder(wavs.front());
  Convert(wavs);
}

void frmWav2Au::Convert(const std::vector<std::string>& wavs) {
  env_.prompter.Busy(true);
  for (const std::string& wav : wavs) {
    AddRow(ConvertWav(env_, wav));
    // Each row shows as its file is done.
    env_.prompter.ProcessEvents();
  }
  env_.prompter.Busy(false);
}

void frmWav2Au::AddRow(const WavConversion& c) {
  const UiTexts& t = Texts();
  auto* row = new QTreeWidgetItem(lstResults);
  row->setText(0, PathText(c.wav));
  row->setToolTip(0, PathText(c.wav));
  const QString result = c.ok() ? QTextOf(t, "sConverted") + PathText(FileNameOnly(c.au))
                                : QTextOf(t, "sFailed") + DisplayText(c.reason);
  row->setText(1, result);
  row->setToolTip(1, result);
  lstResults->scrollToItem(row);
}

void frmWav2Au::btnReadMe_Click() { mnuWav2Au_ReadMe_Click(env_); }

}  // namespace kp

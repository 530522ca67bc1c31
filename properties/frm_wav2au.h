// frmWav2Au: the Tools menu's WAV to AU converter. The author picks WAV
// files; each is converted beside itself by the converter the buttons'
// sounds use, and the list tells for each what came of it.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "core/env.h"
#include "properties/ui_text.h"
#include "publish/wav_convert.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace kp {

class frmWav2Au : public QWidget {
 public:
  frmWav2Au(QWidget* mainWindow, Env& env);
  static UiTexts& Texts();

  // Picks WAV files and converts them.
  void btnChoose_Click();
  void btnReadMe_Click();
  void btnClose_Click() { close(); }
  // Converts the files and adds a row for each, newest last.
  void Convert(const std::vector<std::string>& wavs);

  QLabel* lblInfo;
  QTreeWidget* lstResults;
  QPushButton* btnChoose;
  QPushButton* btnReadMe;
  QPushButton* btnClose;

 private:
  void AddRow(const WavConversion& c);
  Env& env_;
  std::string lastFolder_;
};

}  // namespace kp

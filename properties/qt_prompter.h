// The windows' answers to the program's questions: message boxes with the
// program's exact texts, frmMyMsgBox for notices, frmMessage for progress,
// file dialogs and the small modal windows of the prompter.
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>

#include "core/event_pacer.h"
#include "core/prompter.h"

namespace kp {

class frmMessage;
class frmMyMsgBox;

class QtPrompter : public Prompter {
 public:
  QtPrompter() = default;
  ~QtPrompter() override;
  QtPrompter(const QtPrompter&) = delete;
  QtPrompter& operator=(const QtPrompter&) = delete;

  // The window the boxes stand over (the main window once it exists).
  void SetOwner(QWidget* owner);
  QWidget* Owner() const { return owner_; }

  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                Icon icon) override;
  bool Notice(const std::string& title, const std::string& text, const std::string& checkCaption,
              bool checked) override;
  void ProgressShow(const std::string& text) override;
  void ProgressSet(const std::string& text, int percent) override;
  bool ProgressCancelled() override;
  void ProgressHide() override;
  std::string SaveFileDialog(const FileDialog& d) override;
  std::string OpenFileDialog(const FileDialog& d) override;
  std::vector<std::string> OpenFilesDialog(const FileDialog& d) override;
  DialogResult ShowDialog(const Dialog& d) override;
  bool ShowCheckList(CheckList& list) override;
  void Busy(bool on) override;
  void ProcessEvents() override;

  // The two windows, created on first use and kept until shutdown.
  frmMessage* Message();
  frmMyMsgBox* MyMsgBox();

 private:
  std::string FileDialogImpl(const FileDialog& d, bool save);
  std::vector<std::string> FilesDialogImpl(const FileDialog& d, bool save, bool many);
  // The window a box or dialog stands over: the active modal window, else
  // the owner.
  QWidget* Parent() const;

  QPointer<QWidget> owner_;
  QPointer<frmMessage> message_;
  QPointer<frmMyMsgBox> myMsgBox_;
  int busyDepth_ = 0;
  int lastPercent_ = -1;
  EventPacer repaintPacer_;
};

// A title "" means the program's own title.
QString BoxTitle(const std::string& title);
// The program's texts use CR LF; a box shows them as line breaks.
QString BoxText(const std::string& text);

}  // namespace kp

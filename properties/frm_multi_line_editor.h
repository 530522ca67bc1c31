// frmMultiLineEditor: edits a label with real line breaks. The label box
// of the panel stays one line and holds each break as "\n"; this window
// shows them as breaks and writes every edit back through the label box,
// whose own change handler carries it into the model.
#pragma once

#include <QWidget>

#include "properties/ui_text.h"

class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace kp {

class frmMultiLineEditor : public QWidget {
 public:
  // `mainWindow`: the window it stands beside; `txtLabel`: the label box it
  // edits; `caption`: the tool tip of the button that opens it.
  frmMultiLineEditor(QWidget* mainWindow, QLineEdit* txtLabel, const QString& caption);
  static UiTexts& Texts();

  void Form_Load();
  // Takes the label box's text; runs at activation and when the panel
  // changes state.
  void Form_Activate();

  QPlainTextEdit* txtEditor;
  QPushButton* btnClose;

 protected:
  void showEvent(QShowEvent* e) override;
  void changeEvent(QEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void txtEditor_Change();
  void btnClose_Click();

  QWidget* mainWindow_;
  QLineEdit* txtLabel_;
  // Set while the editor is being filled from the label box, so that the
  // fill is not written back.
  bool bFilling_ = false;
};

}  // namespace kp

// frmSurHTML: the page text around the applet (before the tag, the
// alternative HTML inside it, after it). Nothing reaches the project until
// Apply or Ok.
#pragma once

#include <QString>
#include <QWidget>
#include <array>

#include "core/language.h"
#include "core/model.h"
#include "generate/html_generator.h"
#include "generate/surrounding.h"
#include "properties/ui_text.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace kp {

class frmSurHTML : public QWidget {
 public:
  frmSurHTML(Project& p, Env& env, GeneratorState& st, const LangSettings& lang, QWidget* parent);
  // The window's texts in the order of its language section.
  static UiTexts& Texts();

  // The JavaScript test of the links and the body tag, then the boxes
  // filled from the project. Runs each time the window opens.
  void Form_Load();
  // The JavaScript test of the links and the body tag.
  void Form_Activate();
  void btnApply_Click();
  void btnOK_Click();
  void btnCANCEL_Click();
  // The three boxes as they stand.
  SurHTMLBoxes Boxes() const;

  QLabel* lblDescr1;
  QLabel* lblDescr2;
  QLabel* lblDescr3;
  QPlainTextEdit* txtHTMLbefore;
  QPlainTextEdit* txtHTMLalt;
  QPlainTextEdit* txtHTMLafter;
  QPushButton* btnApply;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;

 protected:
  bool event(QEvent* e) override;

 private:
  void ApplyTexts();

  Project& p_;
  GeneratorState& st_;
  // The texts the boxes were filled from, for their byte form.
  SurHTMLBoxes loaded_;
  std::array<QString, 3> shown_;
};

}  // namespace kp

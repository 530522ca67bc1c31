#include "app/frm_sur_html.h"
#include "properties/window_lang.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/box_text.h"
#include "design/escape_key.h"

namespace kp {

// The order is the order of the "[frmSurHTML]" section of a language file.
UiTexts& frmSurHTML::Texts() {
  static UiTexts t = {
      {"frmSurHTML", "Surrounding HTML"},
      {"lblDescr1", "HTML that goes before the <applet> tag :"},
      {"lblDescr2", "Alternative HTML :"},
      {"lblDescr3", "HTML that goes after the </applet> tag :"},
      {"btnApply", "&Apply"},
      {"btnOK", "&Ok"},
      {"btnCANCEL", "&Cancel"},
  };
  return t;
}

namespace {

QPlainTextEdit* CodeEditor(QWidget* parent, const char* name) {
  auto* box = new QPlainTextEdit(parent);
  box->setObjectName(name);
  box->setLineWrapMode(QPlainTextEdit::NoWrap);
  box->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  return box;
}

QLabel* Label(QWidget* parent, const char* name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  l->setTextFormat(Qt::PlainText);
  return l;
}

}  // namespace

frmSurHTML::frmSurHTML(Project& p, Env& env, GeneratorState& st, const LangSettings& lang,
                       QWidget* parent)
    : QWidget(parent, Qt::Window), p_(p), st_(st) {
  setObjectName("frmSurHTML");
  lblDescr1 = Label(this, "lblDescr1");
  lblDescr2 = Label(this, "lblDescr2");
  lblDescr3 = Label(this, "lblDescr3");
  txtHTMLbefore = CodeEditor(this, "txtHTMLbefore");
  txtHTMLalt = CodeEditor(this, "txtHTMLalt");
  txtHTMLafter = CodeEditor(this, "txtHTMLafter");
  btnApply = new QPushButton(this);
  btnApply->setObjectName("btnApply");
  btnOK = new QPushButton(this);
  btnOK->setObjectName("btnOK");
  btnCANCEL = new QPushButton(this);
  btnCANCEL->setObjectName("btnCANCEL");
  connect(btnApply, &QPushButton::clicked, this, [this] { btnApply_Click(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
  CloseOnEscape(this, [this] { btnCANCEL_Click(); });

  // The boxes share the height; before and after hold the most text.
  auto* root = new QVBoxLayout(this);
  root->addWidget(lblDescr1);
  root->addWidget(txtHTMLbefore, 3);
  root->addWidget(lblDescr2);
  root->addWidget(txtHTMLalt, 2);
  root->addWidget(lblDescr3);
  root->addWidget(txtHTMLafter, 3);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnApply);
  row->addWidget(btnOK);
  row->addWidget(btnCANCEL);
  root->addLayout(row);

  ApplyLanguageSection(env, lang, Texts(), "[frmSurHTML]");
  ApplyTexts();
  resize(560, 460);
}

void frmSurHTML::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(DisplayText(TextOf(t, "frmSurHTML") + " - " + Lang().TitleText));
  lblDescr1->setText(QTextOf(t, "lblDescr1"));
  lblDescr2->setText(QTextOf(t, "lblDescr2"));
  lblDescr3->setText(QTextOf(t, "lblDescr3"));
  btnApply->setText(QTextOf(t, "btnApply"));
  btnOK->setText(QTextOf(t, "btnOK"));
  btnCANCEL->setText(QTextOf(t, "btnCANCEL"));
}

void frmSurHTML::Form_Load() {
  loaded_ = SurHTML_Load(p_, st_);
  txtHTMLbefore->setPlainText(WithLineFeeds(DisplayText(loaded_.txtHTMLbefore)));
  txtHTMLalt->setPlainText(WithLineFeeds(DisplayText(loaded_.txtHTMLalt)));
  txtHTMLafter->setPlainText(WithLineFeeds(DisplayText(loaded_.txtHTMLafter)));
  shown_ = {txtHTMLbefore->toPlainText(), txtHTMLalt->toPlainText(), txtHTMLafter->toPlainText()};
}

void frmSurHTML::Form_Activate() { SurHTML_Activate(p_, st_); }

bool frmSurHTML::event(QEvent* e) {
  const bool handled = QWidget::event(e);
  if (e->type() == QEvent::WindowActivate) Form_Activate();
  return handled;
}

SurHTMLBoxes frmSurHTML::Boxes() const {
  // A box left as it was filled gives back its bytes unchanged, whatever
  // line ends they had.
  auto bytes = [](const QPlainTextEdit* box, const QString& shown, const std::string& was) {
    const QString now = box->toPlainText();
    return now == shown ? was : WithCRLF(BoxBytes(now, was));
  };
  return {bytes(txtHTMLbefore, shown_[0], loaded_.txtHTMLbefore),
          bytes(txtHTMLalt, shown_[1], loaded_.txtHTMLalt),
          bytes(txtHTMLafter, shown_[2], loaded_.txtHTMLafter)};
}

void frmSurHTML::btnApply_Click() {
  const SurHTMLBoxes boxes = Boxes();
  SurHTML_Apply(p_, boxes);
  loaded_ = boxes;
  shown_ = {txtHTMLbefore->toPlainText(), txtHTMLalt->toPlainText(), txtHTMLafter->toPlainText()};
}

void frmSurHTML::btnOK_Click() {
  btnApply_Click();
  close();
}

void frmSurHTML::btnCANCEL_Click() { close(); }

}  // namespace kp

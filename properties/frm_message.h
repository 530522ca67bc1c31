// frmMessage: the non-modal note over long work, with a text, a gauge and
// Cancel.
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "properties/ui_text.h"

class QLabel;
class QPushButton;

namespace kp {

// picGauge: a band of 100 steps across its width; SetGauge fills one
// vertical stripe a value, at the value minus 3.
class Gauge : public QWidget {
 public:
  explicit Gauge(QWidget* parent = nullptr);
  void Fill(int from, int to);
  void Clear();
  // The stripes drawn so far, one flag a step (-3 .. 100).
  bool Striped(int value) const;

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  static constexpr int kFirst = -3, kLast = 100;
  std::vector<bool> stripes_ = std::vector<bool>(kLast - kFirst + 1, false);
};

class frmMessage : public QDialog {
 public:
  explicit frmMessage(QWidget* parent = nullptr);
  static UiTexts& Texts();

  // Opens the note over `owner`, centred on it, with the caption and the
  // message; Cancel is enabled as `showCancel` says.
  void ShowMessage(const QString& caption, const QString& message, QWidget* owner,
                   bool showCancel);
  // `now` repaints at once, for work that lets no events run; otherwise
  // the note is repainted with the next events.
  void SetMessage(const QString& message, bool now = true);
  void SetGauge(int from, int to, bool now = true);

  // Cancel was pressed since the note was last shown.
  bool Cancelled() const { return cancelled_; }
  // The work's own cancel operation, such as the design window's tiling.
  std::function<void()> onCancel;

  QLabel* lblMessage;
  Gauge* picGauge;
  QPushButton* btnCANCEL;

 protected:
  void hideEvent(QHideEvent* e) override;

 private:
  void btnCANCEL_Click();
  bool cancelled_ = false;
};

}  // namespace kp

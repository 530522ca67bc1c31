// What the design window asks of the main window: the selection, which is
// the list of buttons there, the property panel, the Edit menu and the
// few other things that live on the main window. Every call has a
// harmless default, so a design window can stand alone in a test.
#pragma once

#include <QPoint>
#include <QStringList>
#include <string>

#include "core/model.h"

namespace kp {

class DesignHost {
 public:
  virtual ~DesignHost() = default;

  // --- The selection: row i - 1 of the button list is button i ---
  virtual int SelectedCount() { return 0; }
  virtual bool IsSelected(int /*i*/) { return false; }
  // i becomes the only selected button; the buttons whose selection
  // changed are repainted.
  virtual void SelectItem_lstButtons(int /*i*/) {}
  virtual void AddSelectItem_lstButtons(int /*i*/) {}
  virtual void DeSelectItem_lstButtons(int /*i*/) {}
  // The rows show the buttons' names again (after an exchange of records).
  virtual void RenewList() {}

  // --- The property panel ---
  virtual void ShowProp(int /*i*/) {}
  virtual void SetLastChange(int /*code*/) {}
  // The applet's size in the main window's fields.
  virtual void ShowAppletSize(int /*w*/, int /*h*/) {}

  // --- The main window ---
  virtual void PopupEditMenu(const QPoint& /*globalPos*/) {}
  // The twin of the design window's lock entry.
  virtual void SetLockedMark(bool /*locked*/) {}
  virtual void pub_mnuRefresh_Click() {}
  virtual void FilesDropped(const QStringList& /*files*/) {}
  // The design window refused to close: the main window takes the focus.
  virtual void ActivateMain() {}
  // The design window was activated: the generated page is stale.
  virtual void MarkHTMLStale() {}
  // The colour dialog with the shared custom colours; -1 on cancel.
  virtual Colour ChooseColour(Colour /*start*/) { return -1; }
};

}  // namespace kp

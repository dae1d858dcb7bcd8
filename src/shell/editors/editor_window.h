#pragma once

#include "commands/menu_state.h"
#include "editing/cell_table.h"
#include "editing/editor_draft.h"
#include "editing/save_trail.h"
#include "shell/program_window.h"

#include <QMainWindow>
#include <QPointer>

#include <memory>
#include <vector>

class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace orvane {

class CellTableView;
class CommandMenu;
class MapWindowWidget;
class Shell;

/// What the windows of both editors share: a form above, the table, and "OK" and "Cancel" below. The
/// window changes nothing before OK. It deletes itself when it is closed, and closes with its map
/// window.
///
/// Tab and Return go round the form, F6 goes from the form to the table and back, Ctrl+Return is OK,
/// Escape closes the window as its close box does.
class EditorWindow : public QMainWindow, public ProgramWindow {
  Q_OBJECT

 public:
  ~EditorWindow() override;

  QWidget& Widget() override { return *this; }
  MapWindowWidget* MapSide() override;
  bool Answer(CommandId id) override;
  bool TryClose() override;

  CellTableView& Cells() { return *cells_; }
  CommandMenu& Commands() { return *commands_; }

  /// Shows the window in front of all others.
  void BringToFront();

  /// What a crash must not take: the form, the rows, and a text that is being typed.
  EditorDraft Draft() const;
  /// True if the user has changed something.
  bool HasDraft() const;
  /// Shows an open cell of a draft with its text.
  void RestoreOpenCell(const EditorDraft& draft);

 Q_SIGNALS:
  /// Something was typed, or a row came, went or moved.
  void contentEdited();
  /// The window closes: what it holds is saved or not wanted.
  void draftDiscarded();

 protected:
  /// \param mapWindow  the editor belongs to it
  /// \param widths     of the columns; must outlive the window
  /// \param model      the editor itself, whose cells the table shows
  EditorWindow(Shell& shell, MapWindowWidget& mapWindow, WindowKind kind, std::vector<int>& widths,
               std::unique_ptr<CellModel> model);

  Shell& TheShell() { return shell_; }
  MapWindowWidget& TheMapWindow();

  /// Gives the window the size that its form and all columns take, as far as the screen has it.
  void TakeFirstSize();
  /// Puts the form above the table.
  void SetForm(QLayout* form);
  /// Gives the fields of the form in the order of Tab.
  void SetOrder(std::vector<QWidget*> order);
  /// A label that its field is named after. \param text  with a colon, and "&" before a letter
  QLabel* MakeLabel(const QString& text, QWidget& field);
  /// Shows title and menu as they are now; an editor also its fields.
  virtual void Refresh();

  virtual EditorKind Kind() const = 0;
  /// OK, after the open cell was committed.
  virtual SaveOutcome Save() = 0;
  virtual SaveOutcome RequestClose() = 0;
  virtual QString Title() const = 0;
  virtual EditorDraft DraftOfEditor() const = 0;
  virtual bool IsChanged() const = 0;
  /// Maps were read again: finds the trail or range again.
  virtual void FollowReread() = 0;
  /// True if clicks on the map can add rows.
  virtual bool TakesClicks() const { return false; }
  /// The table is idle, has an open cell, or a selected row.
  virtual void FollowTable(CellTableState) {}
  /// The window is about to go.
  virtual void Leave() {}
  /// Handles Escape before it closes the window.
  virtual bool EscapeMode() { return false; }

  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakeButtons(QVBoxLayout& layout);
  void Ok();
  void Close();
  void Step(const QWidget* from, bool forward);
  void GoToFormOrTable();

  Shell& shell_;
  QPointer<MapWindowWidget> mapWindow_;
  std::unique_ptr<CellModel> model_;
  CommandMenu* commands_;
  QVBoxLayout* layout_;
  CellTableView* cells_;
  std::vector<QWidget*> order_;
  bool mayClose_ = false;
};

}  // namespace orvane

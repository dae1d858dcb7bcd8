#pragma once

#include "editing/trail_editor.h"
#include "shell/editors/editor_window.h"
#include "view/map_window.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace orvane {

/// The widths of the trail editor's columns, by `EntryMode`. They live as long as the program.
using TrailWidths = std::array<std::vector<int>, 3>;

/// The window of a trail editor. Clicks on the map can add rows while it is the target of the map's
/// view.
class TrailEditorWindow final : public EditorWindow, public InputTarget {
  Q_OBJECT

 public:
  /// \param widths  must outlive the window
  TrailEditorWindow(Shell& shell, MapWindowWidget& mapWindow, std::unique_ptr<TrailEditor> editor,
                    TrailWidths& widths);
  ~TrailEditorWindow() override;

  const TrailEditor& Editor() const { return editor_; }

  bool Answer(CommandId id) override;
  void TakePosition(const LatLon& place) override;

 protected:
  EditorKind Kind() const override { return EditorKind::Trail; }
  void FollowReread() override { editor_.FollowReread(); }
  SaveOutcome Save() override;
  SaveOutcome RequestClose() override;
  QString Title() const override;
  EditorDraft DraftOfEditor() const override { return DraftOf(editor_); }
  bool IsChanged() const override { return editor_.IsChanged(); }
  bool TakesClicks() const override { return editor_.TakesClicks(); }
  void FollowTable(CellTableState state) override;
  void Leave() override { EndGraphicalInput(); }
  bool EscapeMode() override;
  void Refresh() override;

 private:
  /// A field of the form with its label.
  struct Field {
    QWidget* widget = nullptr;
    QLineEdit* text = nullptr;
    QLabel* label = nullptr;
  };

  void MakeForm();
  Field MakeField(TrailField field, const QString& label, int letters);
  Field MakeTypeField();
  QRadioButton* MakeModeButton(EntryMode mode, const QString& text);
  void ShowForm();
  void TakeField(TrailField field);
  void SetMode(EntryMode mode);
  /// Saves, and puts the whole map in view if it had no places before.
  SaveOutcome ShowFirstPlaces(const std::function<SaveOutcome()>& save);
  void StartGraphicalInput();
  void EndGraphicalInput();
  bool IsInputTarget();
  Field& At(TrailField field) { return fields_[static_cast<size_t>(field)]; }

  TrailEditor& editor_;
  TrailWidths& widths_;
  std::array<Field, TrailFields> fields_;
  QButtonGroup* modes_;
};

}  // namespace orvane

#pragma once

#include "editing/range_editor.h"
#include "shell/editors/editor_window.h"

#include <memory>
#include <vector>

namespace orvane {

/// The window of a range editor.
class RangeEditorWindow final : public EditorWindow {
  Q_OBJECT

 public:
  /// \param widths  of the columns; must outlive the window
  RangeEditorWindow(Shell& shell, MapWindowWidget& mapWindow, std::unique_ptr<RangeEditor> editor,
                    std::vector<int>& widths);

  const RangeEditor& Editor() const { return editor_; }

 protected:
  EditorKind Kind() const override { return EditorKind::Range; }
  void FollowReread() override { editor_.FollowReread(); }
  SaveOutcome Save() override;
  SaveOutcome RequestClose() override;
  QString Title() const override;
  EditorDraft DraftOfEditor() const override { return DraftOf(editor_); }
  bool IsChanged() const override;

 private:
  void MakeForm();

  RangeEditor& editor_;
  QLineEdit* name_;
  QLineEdit* color_;
  bool fieldsEdited_ = false;  ///< name or colour; no reason to ask, but lost in a crash
};

}  // namespace orvane

#pragma once

#include "base/message_layout.h"

#include <QDialog>

#include <optional>
#include <string>
#include <vector>

class QLineEdit;

namespace orvane {

/// The box of a question, with up to three buttons, or of a prompt, with a field for one line of
/// text besides. Laid out by `LayOutBox`; the first button is the default one, and closing the box
/// counts as the second, also where that is not shown.
///
/// A text too wide for the screen is wrapped, and one too high is scrolled.
class BuiltBox final : public QDialog {
  Q_OBJECT

 public:
  /// \param buttons  as for `ButtonRow`
  /// \param field    what stands in the field at first; nothing for a box without one
  BuiltBox(const QString& title, const std::string& text, const std::vector<std::string>& buttons,
           const std::optional<QString>& field, QWidget* parent);

  /// Shows the box and waits for the answer.
  /// \return the number of the button pressed, from 1
  int Run();

  /// What stands in the field.
  QString FieldText() const;

  void reject() override;

 private:
  void MakeButtons(const std::vector<BoxButton>& row, const std::vector<BoxPlace>& places);
  void MakePicture();
  void MakeText(const QStringList& lines, const BoxPlace& place);
  void MakeField(const QString& content, const BoxPlace& place);

  QWidget* firstFocus_ = nullptr;
  QLineEdit* field_ = nullptr;
};

}  // namespace orvane

#pragma once

#include "base/message_layout.h"
#include "base/messages.h"

#include <QDialog>

#include <string>
#include <vector>

class QLineEdit;

namespace orvane {

/// The box of a question with up to three buttons, or of a prompt, which also has a field for one
/// line of text. `LayOutBox` lays it out. The first button is the default. Closing the box counts as
/// the second button, even if that is not shown.
///
/// A text that is too wide for the screen is wrapped, one that is too high is scrolled.
class BuiltBox final : public QDialog {
  Q_OBJECT

 public:
  /// A question.
  /// \param buttons  as for `ButtonRow`
  BuiltBox(const QString& title, const std::string& text, const std::vector<std::string>& buttons,
           QWidget* parent);
  /// A prompt. Its field accepts no more bytes than the prompt allows, and offers a list of the
  /// earlier texts if there are any.
  BuiltBox(const TextPrompt& prompt, QWidget* parent);

  /// Shows the box and waits for the answer.
  /// \return the number of the button pressed, from 1
  int Run();

  /// The text in the field.
  QString FieldText() const;

  void reject() override;

 private:
  void Fill(const std::string& text, const std::vector<std::string>& buttons);
  void MakeButtons(const std::vector<BoxButton>& row, const std::vector<BoxPlace>& places);
  void MakePicture();
  void MakeText(const QStringList& lines, const BoxPlace& place);
  void MakeField(const TextPrompt& prompt);
  void LimitField(size_t size, const std::string& before);

  QWidget* firstFocus_ = nullptr;
  QLineEdit* field_ = nullptr;      ///< of a prompt
  QWidget* fieldWidget_ = nullptr;  ///< the field, or the box with a list that holds it
};

}  // namespace orvane

#pragma once

#include <QButtonGroup>
#include <QGroupBox>

#include <string>
#include <vector>

class QRadioButton;

namespace orvane {

/// A button of a `RadioBox` and the number that it means.
struct RadioChoice {
  int value;
  QString text;
};

/// A titled box of radio buttons, each with a number.
class RadioBox final : public QGroupBox {
  Q_OBJECT

 public:
  RadioBox(const QString& title, const std::vector<RadioChoice>& choices, QWidget* parent);

  QRadioButton& Button(int value) const;
  /// Also takes a button that is elsewhere in the window.
  void Adopt(QRadioButton& button, int value);
  /// \return the number of the chosen button; where none is chosen, the number that was set last,
  ///         -1 at first
  int Value() const { return group_.checkedId() < 0 ? value_ : group_.checkedId(); }
  /// A number without a button is kept, and chooses none.
  void SetValue(int value);

 private:
  QButtonGroup group_;
  int value_ = -1;  ///< set last
};

}  // namespace orvane

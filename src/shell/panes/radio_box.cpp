#include "shell/panes/radio_box.h"

#include <QRadioButton>
#include <QVBoxLayout>

namespace orvane {

RadioBox::RadioBox(const QString& title, const std::vector<RadioChoice>& choices, QWidget* parent)
    : QGroupBox(title, parent) {
  auto* layout = new QVBoxLayout(this);
  for (const RadioChoice& choice : choices) {
    // A "&" of a user's text is not a key.
    QString text = choice.text;
    auto* button = new QRadioButton(text.replace(QLatin1Char('&'), QStringLiteral("&&")), this);
    button->setAccessibleName(title + QStringLiteral(": ") + choice.text);
    group_.addButton(button, choice.value);
    layout->addWidget(button);
  }
  layout->addStretch();
}

QRadioButton& RadioBox::Button(int value) const {
  return *static_cast<QRadioButton*>(group_.button(value));
}

void RadioBox::Adopt(QRadioButton& button, int value) { group_.addButton(&button, value); }

void RadioBox::SetValue(int value) {
  value_ = value;
  if (QAbstractButton* button = group_.button(value)) button->setChecked(true);
}

}  // namespace orvane

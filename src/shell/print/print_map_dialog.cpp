#include "shell/print/print_map_dialog.h"

#include "base/messages.h"
#include "paint/display_text.h"
#include "shell/messages/title_width.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

// Texts that a field shows whole: the widest of their kind.
constexpr const char* WidestAngle = "W188\xB0 88.88888'";
constexpr const char* WidestScale = "1:88888888";
constexpr const char* WidestNumber = "88.888km";
constexpr const char* WideLabel = "Home ranges in the rains of 2004";

/// The name of a field, which ends beside it.
QLabel* NameOf(const char* text, QWidget* field, QWidget* parent) {
  auto* label = new QLabel(QString::fromLatin1(text), parent);
  label->setBuddy(field);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

/// A box for the fields below a radio button, set in as far as the text of the button.
QGridLayout* FieldsBelow(const QRadioButton& button, QWidget* box) {
  auto* grid = new QGridLayout(box);
  const int indent =
      button.style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, &button) +
      button.style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, &button);
  grid->setContentsMargins(indent, 0, 0, 0);
  return grid;
}

}  // namespace

PrintMapDialog::PrintMapDialog(PrintMapWindow& print, PrintSettings& settings, Messages& messages,
                               QWidget* parent)
    : QDialog(parent),
      print_(print),
      settings_(settings),
      messages_(messages),
      values_(OpenPrintDialog(print, settings)),
      fillPage_(new QRadioButton(this)),
      area_(new QRadioButton(QStringLiteral("Print this &area"), this)),
      point_(new QRadioButton(QStringLiteral("Print around this p&oint"), this)),
      lastSelection_(new QCheckBox(QStringLiteral("Print Last &Selection"), this)) {
  setObjectName(QStringLiteral("printMapDialog"));
  setWindowTitle(QStringLiteral("Print"));
  auto* layout = new QVBoxLayout(this);
  auto* first = new QHBoxLayout;
  first->addWidget(fillPage_, 1);
  first->addWidget(lastSelection_);
  layout->addLayout(first);
  layout->addWidget(area_);
  layout->addWidget(MakeAreaFields());
  layout->addWidget(point_);
  layout->addWidget(MakePointFields());
  layout->addWidget(MakeCommonFields());
  layout->addStretch();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  lastSelection_->setAccessibleName(QStringLiteral("Print Last Selection"));
  connect(lastSelection_, &QCheckBox::toggled, this, &PrintMapDialog::ToggleLastSelection);
  for (const auto& [button, mode] : {std::pair{fillPage_, PrintMode::FillPage},
                                     {area_, PrintMode::Area},
                                     {point_, PrintMode::AroundPoint}}) {
    connect(button, &QRadioButton::clicked, this, [this, mode = mode] { Choose(mode); });
  }
  for (const Field& field : fields_) ConnectField(field);
  ShowValues();
  WidenToTitle(*this);
  fillPage_->setFocus();
}

QLineEdit* PrintMapDialog::AddField(const char* name, std::string PrintDialog::*text,
                                    PrintMode mode, const char* widest) {
  auto* edit = new QLineEdit(this);
  edit->setAccessibleName(QString::fromLatin1(name));
  // With room for the frame and for the cursor after the text.
  edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(QString::fromLatin1(widest)) +
                        edit->fontMetrics().averageCharWidth() * 2);
  fields_.push_back({edit, text, mode});
  return edit;
}

QWidget* PrintMapDialog::MakeAreaFields() {
  auto* box = new QWidget(this);
  QGridLayout* grid = FieldsBelow(*area_, box);
  const auto add = [&](const char* name, std::string PrintDialog::*text, const char* widest) {
    return AddField(name, text, PrintMode::Area, widest);
  };
  grid->addWidget(new QLabel(QStringLiteral("From:"), box), 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("To:"), box), 0, 2);
  QLineEdit* south = add("Area: from latitude", &PrintDialog::south, WidestAngle);
  grid->addWidget(NameOf("La&titude", south, box), 1, 0);
  grid->addWidget(south, 1, 1);
  grid->addWidget(add("Area: to latitude", &PrintDialog::north, WidestAngle), 1, 2);
  QLineEdit* west = add("Area: from longitude", &PrintDialog::west, WidestAngle);
  grid->addWidget(NameOf("Lo&ngitude", west, box), 2, 0);
  grid->addWidget(west, 2, 1);
  grid->addWidget(add("Area: to longitude", &PrintDialog::east, WidestAngle), 2, 2);
  QLineEdit* scale = add("Area: scale", &PrintDialog::areaScale, WidestScale);
  grid->addWidget(NameOf("S&cale:", scale, box), 3, 0);
  grid->addWidget(scale, 3, 1);
  grid->addWidget(new QLabel(QStringLiteral("No Rotation"), box), 3, 2);
  return box;
}

QWidget* PrintMapDialog::MakePointFields() {
  auto* box = new QWidget(this);
  QGridLayout* grid = FieldsBelow(*point_, box);
  const auto add = [&](const char* label, const char* name, std::string PrintDialog::*text,
                       const char* widest, int row, int column) {
    QLineEdit* edit = AddField(name, text, PrintMode::AroundPoint, widest);
    grid->addWidget(NameOf(label, edit, box), row, column);
    grid->addWidget(edit, row, column + 1);
  };
  grid->addWidget(new QLabel(QStringLiteral("Centered on:"), box), 0, 0);
  add("Lat", "Point: latitude", &PrintDialog::centerLatitude, WidestAngle, 0, 1);
  add("Lon", "Point: longitude", &PrintDialog::centerLongitude, WidestAngle, 0, 3);
  grid->addWidget(new QLabel(QStringLiteral("Show at least"), box), 1, 0);
  add("&Vertical", "Point: show at least, vertical", &PrintDialog::vertical, WidestNumber, 1, 1);
  add("&Hor.", "Point: show at least, horizontal", &PrintDialog::horizontal, WidestNumber, 1, 3);
  add("Scal&e:", "Point: scale", &PrintDialog::pointScale, WidestScale, 2, 1);
  add("&Rotate:", "Point: rotate, degrees", &PrintDialog::rotation, WidestNumber, 2, 3);
  return box;
}

QWidget* PrintMapDialog::MakeCommonFields() {
  auto* box = new QWidget(this);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  QLineEdit* label = AddField("Label", &PrintDialog::label, PrintMode::FillPage, WideLabel);
  grid->addWidget(NameOf("&Label:", label, box), 0, 0);
  grid->addWidget(label, 0, 1, 1, 3);
  QLineEdit* size =
      AddField("Point Size", &PrintDialog::pointSize, PrintMode::FillPage, WidestNumber);
  grid->addWidget(NameOf("Point Si&ze:", size, box), 1, 0);
  grid->addWidget(size, 1, 1);
  gridColor_ = new QComboBox(box);
  gridColor_->setEditable(true);
  gridColor_->setInsertPolicy(QComboBox::NoInsert);
  gridColor_->setCompleter(nullptr);  // it would finish what is typed
  gridColor_->setAccessibleName(QStringLiteral("Grid Color"));
  gridColor_->view()->setAccessibleName(QStringLiteral("Grid Colors"));
  for (const char* color : OfferedGridColors) gridColor_->addItem(QString::fromLatin1(color));
  connect(gridColor_, &QComboBox::currentTextChanged, this,
          [this](const QString& text) { values_.gridColor = text.toStdString(); });
  grid->addWidget(NameOf("&Grid Color:", gridColor_, box), 1, 2);
  grid->addWidget(gridColor_, 1, 3);
  grid->setColumnStretch(2, 1);
  return box;
}

void PrintMapDialog::ConnectField(const Field& field) {
  field.edit->installEventFilter(this);
  connect(field.edit, &QLineEdit::textEdited, this, [this, field](const QString& text) {
    values_.*field.text = StoredText(text, "");
    if (field.mode == PrintMode::Area) values_.editedFields |= PrintAreaEdited;
    if (field.mode == PrintMode::AroundPoint) values_.editedFields |= PrintPointEdited;
  });
}

bool PrintMapDialog::eventFilter(QObject* watched, QEvent* event) {
  // The focus that comes back to the window, or from a menu, chooses nothing.
  const bool chosen = event->type() == QEvent::FocusIn &&
                      static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason &&
                      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason;
  if (chosen) {
    for (const Field& field : fields_) {
      if (field.edit == watched && field.mode != PrintMode::FillPage) Choose(field.mode);
    }
  }
  return QDialog::eventFilter(watched, event);
}

void PrintMapDialog::Choose(PrintMode mode) {
  values_.mode = mode;
  fillPage_->setChecked(mode == PrintMode::FillPage);
  area_->setChecked(mode == PrintMode::Area);
  point_->setChecked(mode == PrintMode::AroundPoint);
}

void PrintMapDialog::ToggleLastSelection(bool checked) {
  values_.lastSelection = checked;
  FillPrintDialog(print_, settings_, values_);
  ShowValues();
}

void PrintMapDialog::ShowValues() {
  fillPage_->setText(QLatin1Char('&') + QString::fromLatin1(FillPageTitle(values_)));
  for (QRadioButton* button : {fillPage_, area_, point_}) {
    button->setAccessibleName(button->text().remove(QLatin1Char('&')));
  }
  lastSelection_->setEnabled(values_.lastSelectionEnabled);
  lastSelection_->setChecked(values_.lastSelection);
  for (const Field& field : fields_) field.edit->setText(DisplayText(values_.*field.text));
  gridColor_->setCurrentText(DisplayText(values_.gridColor));
  Choose(values_.mode);
}

void PrintMapDialog::GoTo(std::string PrintDialog::*text) {
  const auto field = std::find_if(fields_.begin(), fields_.end(),
                                  [text](const Field& each) { return each.text == text; });
  QLineEdit* edit = field == fields_.end() ? gridColor_->lineEdit() : field->edit;
  edit->setFocus();
  edit->selectAll();
}

void PrintMapDialog::accept() {
  const auto refusal = AcceptPrintDialog(values_, print_, settings_);
  if (!refusal) {
    QDialog::accept();
    return;
  }
  messages_.Post(Severity::Error, refusal->message);
  if (refusal->field != nullptr) GoTo(refusal->field);
}

}  // namespace orvane

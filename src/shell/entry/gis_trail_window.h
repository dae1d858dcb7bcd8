#pragma once

#include "entry/gis_import.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace orvane {

class Shell;

/// The window "GIS Trail": shows the tracks of a GPS file one after the other, and makes trails of
/// those that the user takes. It is not modal. It deletes itself when it is closed, and closes after
/// the last track.
class GisTrailWindow final : public QDialog {
  Q_OBJECT

 public:
  /// \param import  must have a current track
  /// \param boxes   the state of the check boxes, kept from one import to the next; must outlive
  ///                the window
  /// \param wasEmpty  the map had no places before the import: after each track the whole of it is
  ///                  put in view
  GisTrailWindow(Shell& shell, GisImport import, GisBoxes& boxes, QWidget* parent,
                 bool wasEmpty = false);

 private:
  /// A field of the window, and the text that it edits.
  struct Row {
    QLineEdit* edit;
    std::string GisTrailFields::*text;
    GisField field;  ///< its name when its text can't be read
  };

  void AddRow(QGridLayout& layout, const QString& label, std::string GisTrailFields::*text,
              GisField field = GisField::None);
  void AddBox(QLayout& layout, const QString& label, bool GisBoxes::*box);
  QPushButton* AddButton(QLayout& layout, const QString& label);
  QLayout* MakeFields();
  QLayout* MakeBoxes();
  QLayout* MakeButtons();

  void ShowFields();
  GisTrailFields ReadFields() const;
  /// \param all  also takes the tracks that follow
  void Take(bool all);
  void Skip();
  void ShowPreview();
  /// Puts the focus on a field that can't be read.
  void GoTo(GisField bad);
  void Advance(const GisTrailFields& typed);

  Shell& shell_;
  GisImport import_;
  GisBoxes& boxes_;
  bool wasEmpty_;
  GisTrailFields fields_;  ///< what was shown last
  QLabel* progress_;
  std::vector<Row> rows_;
  QPushButton* cancel_ = nullptr;
};

}  // namespace orvane

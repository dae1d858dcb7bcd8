#pragma once

#include "entry/preview.h"

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace orvane {

struct Map;
class PreviewTable;
class Shell;

/// A window on what an import would do with the rows of a file. It is modal. The rows that are left out
/// can be saved as a table.
class PreviewWindow final : public QDialog {
  Q_OBJECT

 public:
  enum class Buttons {
    Close,
    OkAndCancel  ///< what was assigned to columns is used after OK
  };

  /// \param map   is imported into; must outlive the window
  /// \param path  of the file
  PreviewWindow(Shell& shell, const Map& map, const std::string& path, Buttons buttons,
                QWidget* parent);

  /// Gives each column of the file a menu in the heading.
  /// \param choices  the first is that of a column without a meaning
  void SetChoices(const std::vector<std::string>& choices);

  /// Shows a preview.
  /// \param chosen  for each column of the file, what its menu shows
  void ShowPage(const PreviewPage& page, const std::vector<int>& chosen = {});

 Q_SIGNALS:
  /// The user has given a column of the file, from 0, another meaning.
  void assignmentChanged(int column, int choice);

 private:
  QLabel* AddLine(const QString& name);
  QLayout* MakeButtons(Buttons buttons);
  void SaveLeftOutRows();

  Shell& shell_;
  const Map& map_;
  std::string path_;
  std::string leftOut_;
  PreviewTable* table_;
  QLabel* warning_ = nullptr;
  QLabel* counts_ = nullptr;
  QPushButton* save_ = nullptr;
};

}  // namespace orvane

#pragma once

#include "commands/file_dialogs.h"

#include <QObject>
#include <QPointer>

#include <string>
#include <string_view>

class QWidget;

namespace orvane {

class HelpWindow;
class Shell;

/// Answers F1 in every window, dialog and open menu with the page about it. Looks for the help file
/// at the first use, not at the start.
class HelpGuide final : public QObject {
  Q_OBJECT

 public:
  /// \param shell  owns this
  explicit HelpGuide(Shell& shell);
  ~HelpGuide() override;

  /// Shows a page in the help window, unless there is no help file.
  void ShowPage(std::string_view page);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  HelpWindow* WindowFor(QWidget* modal);

  Shell& shell_;
  FileSpecification file_;       ///< what the dialog for the help file remembers
  std::string helpFile_;         ///< empty until it is found
  QPointer<HelpWindow> window_;  ///< the one that belongs to no dialog
  bool asking_ = false;          ///< while the dialog for the help file is open
};

}  // namespace orvane

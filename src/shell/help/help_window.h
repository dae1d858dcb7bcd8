#pragma once

#include <QMainWindow>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>
#include <string_view>

class QHelpEngine;
class QTabWidget;
class QTextBrowser;
class QToolBar;

namespace orvane {

/// Shows the help file: contents, an index and a search at the left, a page at the right. The key of
/// a tab also moves the focus into it. Escape and Ctrl+W close the window.
class HelpWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// \param helpFile  a good one, see `LookAtHelpFile`
  /// \param parent    null, or the modal dialog during which this window is used
  HelpWindow(const QString& helpFile, QWidget* parent);
  ~HelpWindow() override;

  /// \param page  such as "window.html#moving-about"
  void ShowPage(std::string_view page);
  QUrl ShownPage() const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// The key of "Exit" was pressed.
  void exitRequested();

 private:
  void OpenFile(const QString& helpFile);
  void MakeToolBar();
  QWidget* MakeIndex();
  QWidget* MakeSearch();
  void ShowUrl(const QUrl& url);
  void FocusTab();
  void FocusTabLater();

  QTemporaryDir folder_;  ///< of the engine's own files, which need not be kept
  std::unique_ptr<QHelpEngine> engine_;
  QTextBrowser* text_;
  QTabWidget* tabs_;
  bool focusDue_ = false;  ///< once the field of the tab can take it
};

}  // namespace orvane

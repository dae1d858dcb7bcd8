#pragma once

#include <QWidget>

#include <memory>

class QLabel;
class QModelIndex;
class QPushButton;
class QTreeView;

namespace orvane {

class MessageLog;
class Shell;
class TextViewer;

/// The list of all messages, each with the file and the line that it came from. A click, or Enter,
/// opens that file at the line.
class MessagesWindow final : public QWidget {
  Q_OBJECT

 public:
  /// \param log  has to outlive the window
  explicit MessagesWindow(MessageLog& log, QWidget* parent = nullptr);
  ~MessagesWindow() override;

  /// Shows the window with a row in sight.
  void ShowRow(int row);

 private:
  void OpenText(const QModelIndex& index);
  void Copy();
  void ShowCount();

  MessageLog& log_;
  QLabel* count_;
  QTreeView* list_;
  QPushButton* copy_;
  QPushButton* clear_;
  std::unique_ptr<TextViewer> viewer_;
};

/// Plugs in the command that opens the window, and lets boxes hand their rest to it.
void PlugMessagesWindow(Shell& shell);

}  // namespace orvane

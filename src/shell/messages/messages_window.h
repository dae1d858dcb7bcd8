#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QLabel;
class QModelIndex;
class QPushButton;
class QTreeView;

namespace orvane {

class MessageLog;
class Shell;
class Surroundings;
class TextViewer;
struct MessageOrigin;

/// The list of all messages, each with the file and the line that it came from. A click, or Enter,
/// opens that file at the line; F8 and Shift+F8 step to the next and the previous message that has
/// one. A message about a point opens the first line that names it, or shows its place on the map.
class MessagesWindow final : public QWidget {
  Q_OBJECT

 public:
  /// \param log           has to outlive the window
  /// \param surroundings  beep where there is no further message
  MessagesWindow(MessageLog& log, Surroundings& surroundings, QWidget* parent = nullptr);
  ~MessagesWindow() override;

  /// Shows the window, scrolled to a row.
  void ShowRow(int row);

  /// Shows the origin's point on the map, if it has a place. Empty for a program without maps.
  std::function<void(const MessageOrigin& origin)> showOnMap;

 Q_SIGNALS:
  /// The key of "Exit" was pressed, here or in the window with the text.
  void exitRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void OpenText(const QModelIndex& index);
  void OpenRow(int row);
  int RowFrom(int row, int step) const;
  void Step(int step);
  void Copy();
  void Count(int first, int last);
  void ShowCount();
  TextViewer& Viewer();

  MessageLog& log_;
  Surroundings& surroundings_;
  QLabel* count_;
  QTreeView* list_;
  QPushButton* copy_;
  QPushButton* clear_;
  std::unique_ptr<TextViewer> viewer_;
  int withLine_ = 0;              ///< messages that came from a line
  std::vector<int> aboutPoints_;  ///< rows of the first messages that are about a point
  size_t opened_ = 0;             ///< number of the message that was opened last
};

/// Plugs in the command that opens the window, sends it the messages that boxes leave out, and shows
/// notes on the maps.
void PlugMessagesWindow(Shell& shell);

}  // namespace orvane

#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

namespace orvane {

class MapWindowWidget;
class ResultNote;
class Shell;

/// Shows notes, which have no box, at the edge of the map in use. The notes of one command appear
/// together, after it. A click opens the messages window at the first of them.
class ShownNotes final : public QObject {
  Q_OBJECT

 public:
  /// Further lines are only in the messages window.
  static constexpr qsizetype MostLines = 4;

  /// \param shell  owns this
  explicit ShownNotes(Shell& shell);

  /// \param number  of the message in the log
  void Add(size_t number, const QString& text);

 private:
  void Show();
  ResultNote& NoteOn(MapWindowWidget& window);

  Shell& shell_;
  QTimer timer_;
  QStringList due_;        ///< notes that are not shown yet
  size_t first_ = 0;       ///< number of the first of them
  size_t shownFirst_ = 0;  ///< number of the first note of those shown last
};

}  // namespace orvane

#pragma once

#include <QWidget>

#include <string>

class QLabel;
class QPlainTextEdit;

namespace orvane {

/// Shows a text file, to be looked at and not to be changed, at one line.
class TextViewer final : public QWidget {
  Q_OBJECT

 public:
  /// A file of more bytes is not shown.
  static constexpr size_t LargestShown = size_t{32} << 20;

  explicit TextViewer(QWidget* parent = nullptr);

  /// Reads the file as it is now, and marks a line of it.
  /// \param line  from 1; 0 marks none. Lines are counted as the reader of maps counts them
  void ShowLine(const std::string& file, size_t line);

 private:
  void Mark(size_t line);

  QPlainTextEdit* text_;
  QLabel* place_;
};

}  // namespace orvane

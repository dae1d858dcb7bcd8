#pragma once

#include <QPlainTextEdit>

namespace orvane {

/// A read-only text with line numbers in a margin at its left.
class NumberedText final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit NumberedText(QWidget* parent);

  /// Marks a line and brings it to the middle.
  /// \param line  from 1; 0, or one after the last, marks none
  void MarkLine(size_t line);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Margin;

  void LayOutMargin();
  void PaintMargin(QPaintEvent& event);

  Margin* margin_;
};

}  // namespace orvane

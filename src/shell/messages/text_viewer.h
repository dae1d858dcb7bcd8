#pragma once

#include "shell/files/file_state.h"

#include <QWidget>

#include <string>

class QLabel;
class QPushButton;

namespace orvane {

class NumberedText;

/// What the viewer shows.
struct ViewedPlace {
  std::string file;
  size_t line = 0;      ///< from 1, as the reader of maps counts; 0 marks none
  QString message;      ///< about the line; empty for none
  FileState fileState;  ///< of the file when the program read it
};

/// The steps that the viewer offers.
struct ViewerSteps {
  bool previous = false;  ///< to the message before
  bool next = false;      ///< to the message after
};

/// Shows a text file at one line, read-only. Each line is decoded by itself, as UTF-8 or Latin-1. A
/// notice says if the file has changed since the program read it.
class TextViewer final : public QWidget {
  Q_OBJECT

 public:
  /// Larger files, in bytes, are not shown.
  static constexpr size_t LargestShown = size_t{32} << 20;

  explicit TextViewer(QWidget* parent = nullptr);

  /// Reads the file as it is now, and marks the line.
  void Show(const ViewedPlace& place);
  /// Enables the buttons to the previous and the next message.
  void OfferSteps(const ViewerSteps& offered);

 Q_SIGNALS:
  /// The user wants the message after this one (1) or before it (-1).
  void stepRequested(int step);
  /// The key of "Exit" was pressed.
  void exitRequested();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Read();
  QPushButton* MakeStep(const QString& text, const char* name, const QKeySequence& key, int step);

  QLabel* message_;
  QLabel* notice_;
  NumberedText* text_;
  QLabel* where_;
  QPushButton* previous_;
  QPushButton* next_;
  ViewedPlace place_;
  FileState shownState_;  ///< of the file when it was last read here
};

}  // namespace orvane

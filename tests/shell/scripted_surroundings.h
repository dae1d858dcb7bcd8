#pragma once

#include "shell/keepers.h"
#include "shell/surroundings.h"
#include "support/scripted_questions.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// Printer boxes that do what a test lays down, and cancel otherwise.
class ScriptedPrinters final : public PrinterDialogs {
 public:
  bool IsValid(const QPrinter& /*printer*/) override {
    ++checks;
    return --invalid < 0;
  }
  void SetUpPage(QPrinter& printer, QWidget* /*parent*/) override {
    ++setUps;
    if (setUp) setUp(printer);
  }
  bool ChoosePrinter(QPrinter& printer, int pages, QWidget* /*parent*/) override {
    offered.push_back(pages);
    return choose && choose(printer);
  }
  bool Preview(QPrinter& printer, const std::function<bool(QPrinter&)>& draw,
               QWidget* /*parent*/) override {
    ++previews;
    return preview && preview(printer, draw);
  }

  int invalid = 0;  ///< so many checks find no valid printer
  int checks = 0;
  int setUps = 0;
  int previews = 0;
  std::vector<int> offered;  ///< the pages of each job that reached the box
  std::function<void(QPrinter& printer)> setUp;
  std::function<bool(QPrinter& printer)> choose;
  std::function<bool(QPrinter& printer, const std::function<bool(QPrinter&)>& draw)> preview;
};

/// Surroundings that count what is asked of them.
class ScriptedSurroundings final : public Surroundings {
 public:
  void Beep() override { ++beeps; }
  void EndProgram() override {
    ++ends;
    if (ended) ended();
  }
  void EndAtOnce(int status) override {
    ++ends;
    endStatus = status;
    if (endedAtOnce) endedAtOnce();
  }
  void EndBySignal(int signal) override { endSignal = signal; }
  std::chrono::milliseconds Now() override { return clock ? clock() : desktop_.Now(); }
  FileDialogs& Dialogs() override { return otherDialogs == nullptr ? dialogs : *otherDialogs; }

  PrinterDialogs& Printers() override { return printers; }

  int beeps = 0;
  int ends = 0;
  int endStatus = 0;                                 ///< after a fatal message
  int endSignal = 0;                                 ///< the signal that ended the program
  std::function<void()> ended;                       ///< called at each end
  std::function<void()> endedAtOnce;                 ///< called after a fatal message
  std::function<std::chrono::milliseconds()> clock;  ///< that of the machine if empty
  ScriptedDialogs dialogs;
  ScriptedPrinters printers;
  FileDialogs* otherDialogs = nullptr;  ///< used in place of `dialogs`

 private:
  DesktopSurroundings desktop_;
};

/// Preferences that a test holds.
class ScriptedPreferences final : public PreferencesKeeper {
 public:
  explicit ScriptedPreferences(std::function<std::string()> read, std::function<void()> write = {})
      : read_(std::move(read)), write_(std::move(write)) {}
  std::string Read() override { return read_ ? read_() : std::string(); }
  void Write() override {
    if (write_) write_();
  }

 private:
  std::function<std::string()> read_;
  std::function<void()> write_;
};

/// Recovery copies that a test only hears of.
class ScriptedCopies final : public CopyKeeper {
 public:
  explicit ScriptedCopies(std::function<void()> write) : write_(std::move(write)) {}
  std::optional<std::vector<Map*>> OfferCopies() override { return std::vector<Map*>(); }
  void WriteAll() override { write_(); }

 private:
  std::function<void()> write_;
};

}  // namespace orvane

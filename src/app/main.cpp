#include "shell/end_of_session.h"
#include "shell/messages/box_messages.h"
#include "shell/program.h"
#include "shell/toolkit_hook.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QHashSeed>
#include <QIcon>
#include <QSessionManager>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// The files among the arguments, byte for byte, because a file name may be in any encoding. No
/// option takes a value, so an argument that does not begin with a dash is a file.
std::vector<std::string> FilesOf(int count, char** arguments) {
  std::vector<std::string> files;
  bool optionsEnded = false;
  for (int i = 1; i < count; ++i) {
    const std::string_view argument(arguments[i]);
    if (!optionsEnded && argument == "--") {
      optionsEnded = true;
    } else if (optionsEnded || argument.size() < 2 || argument[0] != '-') {
      files.emplace_back(argument);
    }
  }
  return files;
}

/// True for the options that print something and end. They need no display.
bool WantsTextOnly(int count, char** arguments) {
  for (int i = 1; i < count; ++i) {
    const std::string_view argument(arguments[i]);
    if (argument == "--") return false;
    if (argument == "-h" || argument == "-?" || argument == "--help" || argument == "-v" ||
        argument == "--version" || argument == "--help-all") {
      return true;
    }
  }
  return false;
}

/// The toolkit prints the help and the version, and ends the program whether or not that worked.
void CheckOutputAtExit() {
  std::atexit([] {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
    std::fputs("error: Can't write to standard output\n", stderr);
    std::_Exit(1);
  });
}

void ReadOptions(const QCoreApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Maps and home ranges for field biologists"));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument(QStringLiteral("files"),
                               QStringLiteral("Map files, each opened in a window of its own"),
                               QStringLiteral("[files...]"));
  parser.process(application);
}

/// Keeps the program alive when memory runs out anywhere in the event loop.
class Application final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc& error) {
      if (outOfMemory) outOfMemory(error);
      return true;
    }
  }

  std::function<void(const std::bad_alloc&)> outOfMemory;
};

}  // namespace

int main(int argc, char** argv) {
  // The fonts of a PDF file are in the order of a hash table: two runs make the same file.
  QHashSeed::setDeterministicGlobalSeed();
  QApplication::setApplicationName(QStringLiteral("orvane"));
  QApplication::setApplicationDisplayName(QStringLiteral("Orvane"));
  QApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
  if (WantsTextOnly(argc, argv)) {
    const QCoreApplication application(argc, argv);
    CheckOutputAtExit();
    ReadOptions(application);  // prints and ends
  }
  Application application(argc, argv);
  ReadOptions(application);
  // The desktop recognises the windows of the program by this name.
  QApplication::setDesktopFileName(QStringLiteral("orvane"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/orvane.svg")));

  orvane::DesktopSurroundings surroundings;
  orvane::BoxMessages boxes(surroundings);
  orvane::Workspace workspace(boxes);
  orvane::Program program(workspace, boxes, surroundings, orvane::DefaultPlaces());
  orvane::Shell& shell = program.TheShell();
  const orvane::ToolkitHook hook(boxes, surroundings);
  const orvane::EndSignals endSignals(shell, surroundings);
  QObject::connect(
      &application, &QGuiApplication::commitDataRequest, &shell,
      [&shell](QSessionManager&) { orvane::WriteAtEndOfSession(shell); }, Qt::DirectConnection);
  application.outOfMemory = [&shell](const std::bad_alloc& error) { shell.Guard().Report(error); };
  // Boxes may come and go before the first window: the last one closed must not end the program.
  QApplication::setQuitOnLastWindowClosed(false);
  QTimer::singleShot(0, [&] { program.Start(FilesOf(argc, argv)); });
  return QApplication::exec();
}

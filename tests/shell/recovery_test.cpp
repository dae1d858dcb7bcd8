// Copies of unsaved changes: when they are written, when they go, and what the next start makes of
// them. Questions are real boxes, and real buttons are pressed.

#include "base/file_names.h"
#include "commands/file_dialogs.h"
#include "mapfile/open_map.h"
#include "mapfile/recovery_folder.h"
#include "shell/command_menu.h"
#include "shell/comment_edit.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/editor_commands.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/program.h"
#include "shell/recovery/editor_drafts.h"
#include "shell/recovery/map_recovery.h"
#include "shell/recovery/recovery_dialog.h"
#include "shell/scripted_surroundings.h"
#include "support/temporary_folder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <utility>

namespace orvane {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr auto SiteText = "T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.6'\tE10 0.6'\n";

/// Presses one of the given buttons in each modal box, in this order.
class ButtonPresser {
 public:
  ButtonPresser() {
    timer_.setInterval(1);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start();
  }
  ~ButtonPresser() { EXPECT_TRUE(buttons.empty()) << "a box did not come up"; }
  ButtonPresser(const ButtonPresser&) = delete;
  ButtonPresser& operator=(const ButtonPresser&) = delete;

  /// Texts of buttons; several, between bars, for one box; an empty one for Escape, and "Ctrl+Q" for
  /// that key.
  std::deque<QString> buttons;
  QStringList titles, texts;
  /// Done while the next box waits.
  std::function<void()> meanwhile;

 private:
  void Look() {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr || box == last_) return;
    last_ = box;
    titles.append(box->windowTitle());
    const auto* label = box->findChild<QLabel*>(QStringLiteral("boxText"));
    const auto* message = qobject_cast<QMessageBox*>(box);
    texts.append(label != nullptr     ? label->text()
                 : message != nullptr ? message->text()
                                      : QString());
    if (const auto action = std::exchange(meanwhile, nullptr)) action();
    if (buttons.empty()) {
      ADD_FAILURE() << "unexpected box " << titles.back().toStdString() << ": "
                    << texts.back().toStdString();
      QTest::keyClick(box, Qt::Key_Escape);
      return;
    }
    const QString wanted = buttons.front();
    buttons.pop_front();
    if (wanted.isEmpty()) {
      QTest::keyClick(box, Qt::Key_Escape);
      return;
    }
    if (wanted == QStringLiteral("Ctrl+Q")) {
      box->activateWindow();  // keys of a window work only while it is active
      EXPECT_TRUE(QTest::qWaitFor([box] { return QApplication::activeWindow() == box; }));
      QTest::keyClick(box, Qt::Key_Q, Qt::ControlModifier);
      return;
    }
    const QStringList parts = wanted.split(QLatin1Char('|'));
    for (const QString& part : parts) Press(*box, part);
  }

  static void Press(QWidget& box, const QString& text) {
    for (auto* button : box.findChildren<QAbstractButton*>()) {
      if (button->text().remove(QLatin1Char('&')) == text || button->accessibleName() == text) {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
        return;
      }
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    QTest::keyClick(&box, Qt::Key_Escape);
  }

  QTimer timer_;
  QPointer<QWidget> last_;
};

/// One run of the program.
class ProgramRun {
 public:
  ProgramRun(const TemporaryFolder& folder, const RecoveryTiming::Time& now,
             FileSystem system = SystemFiles())
      : workspace(boxes), program(workspace, boxes, around) {
    around.clock = [&now] { return now; };
    recovery = &program.KeepCopiesIn(folder.Path("own/recovery"), std::move(system));
  }
  ~ProgramRun() {
    for (Map& map : workspace.maps) map.flags &= ~std::uint32_t{MapDirty};
    while (!shell.Windows().All().empty()) shell.Windows().All().front()->TryClose();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  ProgramRun(const ProgramRun&) = delete;
  ProgramRun& operator=(const ProgramRun&) = delete;

  MapWindowWidget& Open(const std::string& path) {
    MapWindowWidget& window = *shell.OpenFile(path);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    return window;
  }

  ScriptedSurroundings around;
  BoxMessages boxes{around};
  Workspace workspace;
  Program program;
  Shell& shell = program.TheShell();
  ScriptedDialogs* dialogs = &around.dialogs;
  MapRecovery* recovery;
  int& ends = around.ends;
};

class RecoveryShell : public testing::Test {
 protected:
  /// The copies on the disk, of any run.
  std::vector<std::string> Copies() const {
    std::vector<std::string> texts;
    if (!fs::exists(folder_.Path("own/recovery"))) return texts;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path("own/recovery"))) {
      if (entry.path().extension() == ".map") {
        texts.push_back(ReadWholeFile(entry.path().string()).value_or(""));
      }
    }
    return texts;
  }

  void Edit(ProgramRun& run, Map& map, const std::string& comment) {
    AddComment(run.shell, map, "# " + comment);
  }

  void Wait(ProgramRun& run, milliseconds time) {
    now_ += time;
    run.recovery->WriteWhatIsDue();
  }

  /// A run that ends as a power cut ends one, with a copy of a changed map on the disk.
  void LeaveCopy(const std::string& path, const std::string& comment) {
    RecoveryFolder copies(folder_.Path("own/recovery"));
    RecordedMessages unheard;
    Workspace workspace(unheard);
    Map& map = OpenMap(workspace, path);
    map.comments.push_back("# " + comment);
    copies.Write(copies.NewSlot(), RecordOf(map), RecoveryText(map));
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  TemporaryFolder folder_;
  RecoveryTiming::Time now_ = seconds(1000);
  std::string path_ = folder_.Write("site.map", SiteText);
  ButtonPresser presser_;
};

// --- Writing ----------------------------------------------------------------------------------

TEST_F(RecoveryShell, ACopyIsWrittenFifteenSecondsAfterTheFirstChange) {
  ProgramRun run(folder_, now_);
  Map& map = run.Open(path_).TheMap();
  Wait(run, seconds(100));
  EXPECT_TRUE(Copies().empty());
  Edit(run, map, "one");
  Wait(run, milliseconds(14'900));
  EXPECT_TRUE(Copies().empty());
  Wait(run, milliseconds(100));
  ASSERT_EQ(Copies().size(), 1U);
  EXPECT_TRUE(Holds(Copies()[0], "# one"));
  EXPECT_EQ(folder_.Read("site.map"), SiteText);
}

TEST_F(RecoveryShell, ItIsWrittenAnewOnceAMinuteAndOnlyAfterAChange) {
  ProgramRun run(folder_, now_);
  Map& map = run.Open(path_).TheMap();
  Edit(run, map, "one");
  Wait(run, seconds(15));
  Edit(run, map, "two");
  Wait(run, seconds(59));
  ASSERT_EQ(Copies().size(), 1U);
  EXPECT_FALSE(Holds(Copies()[0], "# two"));
  Wait(run, seconds(1));
  ASSERT_EQ(Copies().size(), 1U);
  EXPECT_TRUE(Holds(Copies()[0], "# two"));
  // A change that was not announced, to see whether the copy is written at all.
  map.comments.emplace_back("# three");
  Wait(run, seconds(600));
  EXPECT_FALSE(Holds(Copies()[0], "# three"));
}

TEST_F(RecoveryShell, TheProgramsOwnClockBringsItAbout) {
  ProgramRun run(folder_, now_);
  Map& map = run.Open(path_).TheMap();
  now_ = seconds(0);
  Edit(run, map, "one");
  now_ = seconds(20);
  // The timer runs on the real clock; the next change starts it again.
  Edit(run, map, "two");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Copies().empty(); }, 5000));
}

TEST_F(RecoveryShell, ItWaitsUntilTheUserIsStill) {
  ProgramRun run(folder_, now_);
  MapWindowWidget& window = run.Open(path_);
  Edit(run, window.TheMap(), "one");
  now_ += milliseconds(14'500);
  QTest::keyClick(&window, Qt::Key_F20);
  Wait(run, milliseconds(500));
  EXPECT_TRUE(Copies().empty());
  Wait(run, milliseconds(500));
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, NothingIsWrittenWhileFilesAreRead) {
  ProgramRun run(folder_, now_);
  Edit(run, run.Open(path_).TheMap(), "one");
  run.boxes.BeginBatch(QStringLiteral("opening"));
  Wait(run, seconds(20));
  EXPECT_TRUE(Copies().empty());
  run.boxes.EndBatch();
  Wait(run, seconds(0));
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, NothingIsWrittenInTheMidstOfLongWork) {
  struct Watcher : Progress {
    void Reach(WorkStage /*stage*/, size_t /*done*/, size_t /*of*/) override {}
  } watcher;
  ProgramRun run(folder_, now_);
  Edit(run, run.Open(path_).TheMap(), "one");
  run.workspace.progress = &watcher;
  Wait(run, seconds(20));
  EXPECT_TRUE(Copies().empty());
  run.workspace.progress = nullptr;
  Wait(run, seconds(0));
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, NothingIsWrittenWhileADialogWaits) {
  ProgramRun run(folder_, now_);
  Edit(run, run.Open(path_).TheMap(), "one");
  presser_.buttons = {QString()};
  presser_.meanwhile = [&] {
    Wait(run, seconds(20));
    EXPECT_TRUE(Copies().empty());
  };
  QDialog dialog;
  dialog.exec();
  Wait(run, seconds(1));
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, EachChangedMapHasItsOwnCopy) {
  folder_.Write("season.map", "B\tsite.map\nG\tFig\tN1\tE10 1'\n");
  ProgramRun run(folder_, now_);
  Map& map = run.Open(folder_.Path("season.map")).TheMap();
  Edit(run, map, "season");
  Edit(run, *map.basis, "site");
  Edit(run, run.shell.NewMap().TheMap(), "new");
  Wait(run, seconds(15));
  EXPECT_EQ(Copies().size(), 3U);
}

TEST_F(RecoveryShell, ADiskThatFailsIsReportedOnceUntilACopySucceeds) {
  // Whatever is made fails from now on, and for as long as is wanted.
  bool full = true;
  FileSystem system = SystemFiles();
  system.write = [&](int file, const char* bytes, size_t size) {
    return full ? -1L : SystemFiles().write(file, bytes, size);
  };
  ProgramRun run(folder_, now_, system);
  Map& map = run.Open(path_).TheMap();
  Edit(run, map, "one");
  presser_.buttons = {QStringLiteral("OK")};
  Wait(run, seconds(15));
  ASSERT_EQ(presser_.texts.size(), 1);
  EXPECT_EQ(presser_.texts[0].remove(QChar(0x200B)),
            QStringLiteral("No recovery copy of site.map can be written; the disk may be full. "
                           "Save your map soon."));
  Wait(run, seconds(60));
  Wait(run, seconds(60));
  EXPECT_TRUE(Copies().empty());
  full = false;
  Wait(run, seconds(60));
  EXPECT_EQ(Copies().size(), 1U);
  full = true;
  Edit(run, map, "two");
  presser_.buttons = {QStringLiteral("OK")};
  Wait(run, seconds(60));
  EXPECT_EQ(presser_.texts.size(), 2);
}

// --- Removing ---------------------------------------------------------------------------------

TEST_F(RecoveryShell, ItIsRemovedWhenTheMapIsSaved) {
  ProgramRun run(folder_, now_);
  MapWindowWidget& window = run.Open(path_);
  Edit(run, window.TheMap(), "one");
  Wait(run, seconds(15));
  ASSERT_EQ(Copies().size(), 1U);
  run.shell.Commands().Run(CommandSave, window);
  EXPECT_TRUE(Copies().empty());
  EXPECT_TRUE(Holds(folder_.Read("site.map"), "# one"));
  Wait(run, seconds(600));
  EXPECT_TRUE(Copies().empty());
}

TEST_F(RecoveryShell, ItIsRemovedWhenTheMapIsSavedUnderAnotherName) {
  ProgramRun run(folder_, now_);
  MapWindowWidget& window = run.Open(path_);
  Edit(run, window.TheMap(), "one");
  Wait(run, seconds(15));
  run.dialogs->paths = {folder_.Path("other.map")};
  run.shell.Commands().Run(CommandSaveAs, window);
  EXPECT_TRUE(Copies().empty());
}

TEST_F(RecoveryShell, ItStaysWhenASaveFails) {
  ProgramRun run(folder_, now_);
  MapWindowWidget& window = run.Open(path_);
  Edit(run, window.TheMap(), "one");
  Wait(run, seconds(15));
  fs::remove(path_);
  fs::create_directory(path_);
  // The folder in its place is not the file that was read, and can't be written over either.
  presser_.buttons = {QStringLiteral("Overwrite"), QStringLiteral("OK")};
  run.shell.Commands().Run(CommandSave, window);
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, ItIsRemovedAfterDontSave) {
  ProgramRun run(folder_, now_);
  QPointer<MapWindowWidget> window = &run.Open(path_);
  Edit(run, window->TheMap(), "one");
  Wait(run, seconds(15));
  presser_.buttons = {QStringLiteral("Cancel")};
  EXPECT_FALSE(window->close());
  EXPECT_EQ(Copies().size(), 1U);
  presser_.buttons = {QStringLiteral("Don't Save")};
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(Copies().empty());
  Wait(run, seconds(600));
  EXPECT_TRUE(Copies().empty());
}

TEST_F(RecoveryShell, ItStaysForAnotherWindowOnTheMap) {
  ProgramRun run(folder_, now_);
  QPointer<MapWindowWidget> first = &run.Open(path_);
  QPointer<MapWindowWidget> second = &run.Open(path_);
  Edit(run, first->TheMap(), "one");
  Wait(run, seconds(15));
  presser_.buttons = {QStringLiteral("Don't Save")};
  EXPECT_TRUE(first->close());
  EXPECT_EQ(Copies().size(), 1U);
  presser_.buttons = {QStringLiteral("Don't Save")};
  EXPECT_TRUE(second->close());
  EXPECT_TRUE(Copies().empty());
}

TEST_F(RecoveryShell, ThatOfABasisIsRemovedWithTheLastWindowThatRestsOnIt) {
  folder_.Write("season.map", "B\tsite.map\nG\tFig\tN1\tE10 1'\n");
  ProgramRun run(folder_, now_);
  QPointer<MapWindowWidget> season = &run.Open(folder_.Path("season.map"));
  QPointer<MapWindowWidget> site = &run.Open(path_);
  Edit(run, site->TheMap(), "one");
  Wait(run, seconds(15));
  presser_.buttons = {QStringLiteral("Don't Save")};
  EXPECT_TRUE(site->close());
  EXPECT_EQ(Copies().size(), 1U);
  presser_.buttons = {QStringLiteral("Don't Save")};
  EXPECT_TRUE(season->close());
  EXPECT_TRUE(Copies().empty());
}

TEST_F(RecoveryShell, AMapThatIsOpenedAgainAfterDontSaveIsCopiedAgain) {
  ProgramRun run(folder_, now_);
  QPointer<MapWindowWidget> window = &run.Open(path_);
  Edit(run, window->TheMap(), "one");
  Wait(run, seconds(15));
  presser_.buttons = {QStringLiteral("Don't Save")};
  EXPECT_TRUE(window->close());
  run.Open(path_);
  Wait(run, seconds(60));
  ASSERT_EQ(Copies().size(), 1U);
  EXPECT_TRUE(Holds(Copies()[0], "# one"));
}

TEST_F(RecoveryShell, AfterAnOrderlyEndNothingIsLeft) {
  {
    ProgramRun run(folder_, now_);
    Edit(run, run.Open(path_).TheMap(), "one");
    Wait(run, seconds(15));
    presser_.buttons = {QStringLiteral("Save")};
    EXPECT_TRUE(run.shell.ExitFlow());
  }
  EXPECT_TRUE(fs::is_empty(folder_.Path("own/recovery")));
  ProgramRun run(folder_, now_);
  EXPECT_TRUE(run.recovery->OfferCopies()->empty());
  EXPECT_EQ(presser_.titles.size(), 1);  // the question of the first run
}

// --- The next start ---------------------------------------------------------------------------

TEST_F(RecoveryShell, TheKeyOfExitEndsTheProgramAndKeepsCopiesAndPreferences) {
  LeaveCopy(path_, "one");
  ProgramRun run(folder_, now_);
  int preferences = 0;
  run.shell.Keep(std::make_unique<ScriptedPreferences>(
      [&preferences] { return ++preferences, std::string(); }, [&preferences] { ++preferences; }));
  presser_.buttons = {QStringLiteral("Ctrl+Q")};
  run.program.Start({path_});
  EXPECT_EQ(run.ends, 1);
  EXPECT_EQ(preferences, 0);
  EXPECT_TRUE(run.shell.Windows().All().empty());
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, ARecoveredMapOpensWithItsChangesUnsaved) {
  LeaveCopy(path_, "one");
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("Recover site.map|OK")};
  run.program.Start({});
  EXPECT_EQ(presser_.titles, QStringList{QStringLiteral("Unsaved Maps")});
  ASSERT_EQ(run.shell.Windows().All().size(), 1U);
  MapWindowWidget& window = *run.shell.Windows().All()[0];
  Map& map = window.TheMap();
  EXPECT_EQ(map.fileName, path_);
  EXPECT_TRUE(window.isWindowModified());
  EXPECT_TRUE(window.Commands().ActionOf(CommandSave).isEnabled());
  EXPECT_EQ(map.comments, std::vector<std::string>{"# one"});
  EXPECT_EQ(folder_.Read("site.map"), SiteText);
  EXPECT_TRUE(run.dialogs->questions.empty());
  // The copy stays until the changes are in the file.
  EXPECT_EQ(Copies().size(), 1U);
  run.shell.Commands().Run(CommandSave, window);
  EXPECT_TRUE(Copies().empty());
  EXPECT_TRUE(Holds(folder_.Read("site.map"), "# one"));
}

TEST_F(RecoveryShell, AFileNamedAtTheStartIsFoundRecovered) {
  const std::string other = folder_.Write("other.map", SiteText);
  LeaveCopy(path_, "one");
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("OK")};
  run.program.Start({path_, other});
  ASSERT_EQ(run.shell.Windows().All().size(), 2U);
  EXPECT_EQ(run.shell.Windows().All()[1]->TheMap().comments, std::vector<std::string>{"# one"});
}

TEST_F(RecoveryShell, TheDefaultMapIsFoundRecoveredToo) {
  LeaveCopy(path_, "one");
  ProgramRun run(folder_, now_);
  run.shell.Keep(std::make_unique<ScriptedPreferences>([&] { return path_; }));
  presser_.buttons = {QStringLiteral("OK")};
  run.program.Start({});
  ASSERT_EQ(run.shell.Windows().All().size(), 1U);
  EXPECT_EQ(run.shell.Windows().All()[0]->TheMap().comments, std::vector<std::string>{"# one"});
}

TEST_F(RecoveryShell, LaterKeepsTheCopyForTheStartAfter) {
  LeaveCopy(path_, "one");
  for (int i = 0; i < 2; ++i) {
    ProgramRun run(folder_, now_);
    presser_.buttons = {i == 0 ? QStringLiteral("Later site.map|OK") : QString()};
    run.program.Start({path_});
    ASSERT_EQ(run.shell.Windows().All().size(), 1U);
    EXPECT_TRUE(run.shell.Windows().All()[0]->TheMap().comments.empty());
    // The user continues to work on the file itself.
    Edit(run, run.shell.Windows().All()[0]->TheMap(), "two");
    Wait(run, seconds(15));
    EXPECT_EQ(Copies().size(), 2U);
    run.shell.Commands().Run(CommandSave, *run.shell.Windows().All()[0]);
    EXPECT_EQ(Copies().size(), 1U);
    fs::copy_file(folder_.Write("fresh.map", SiteText), path_,
                  fs::copy_options::overwrite_existing);
  }
  EXPECT_EQ(presser_.titles.size(), 2);
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(RecoveryShell, DiscardRemovesTheCopyAndNothingElse) {
  LeaveCopy(path_, "one");
  {
    ProgramRun run(folder_, now_);
    presser_.buttons = {QStringLiteral("Discard site.map|OK")};
    run.program.Start({path_});
    EXPECT_TRUE(Copies().empty());
    EXPECT_TRUE(run.shell.Windows().All()[0]->TheMap().comments.empty());
  }
  EXPECT_EQ(folder_.Read("site.map"), SiteText);
  ProgramRun run(folder_, now_);
  EXPECT_TRUE(run.recovery->OfferCopies()->empty());
}

TEST_F(RecoveryShell, ARecoveredMapThatIsGivenUpIsNotOfferedAgain) {
  LeaveCopy(path_, "one");
  {
    ProgramRun run(folder_, now_);
    presser_.buttons = {QStringLiteral("OK"), QStringLiteral("Don't Save")};
    run.program.Start({});
    EXPECT_TRUE(run.shell.Windows().All()[0]->TryClose());
    EXPECT_TRUE(Copies().empty());
  }
  ProgramRun run(folder_, now_);
  EXPECT_TRUE(run.recovery->OfferCopies()->empty());
}

TEST_F(RecoveryShell, ASecondProgramIsNotOfferedTheCopiesOfTheFirst) {
  ProgramRun first(folder_, now_);
  Edit(first, first.Open(path_).TheMap(), "one");
  Wait(first, seconds(15));
  ASSERT_EQ(Copies().size(), 1U);
  ProgramRun second(folder_, now_);
  EXPECT_TRUE(second.recovery->OfferCopies()->empty());
  EXPECT_TRUE(presser_.titles.empty());
}

TEST_F(RecoveryShell, AShellWithoutADirectoryKeepsNoCopies) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  Workspace workspace(boxes);
  Program without(workspace, boxes, around, {});
  EXPECT_EQ(without.TheShell().Kept().copies, nullptr);
  Program with(workspace, boxes, around,
               {.ownDirectory = folder_.Path("own"), .dialogDirectory = {}});
  CopyKeeper* copies = with.TheShell().Kept().copies.get();
  ASSERT_NE(copies, nullptr);
  EXPECT_TRUE(copies->OfferCopies()->empty());
  LeaveCopy(path_, "one");
  presser_.buttons = {QStringLiteral("OK")};
  EXPECT_EQ(copies->OfferCopies()->size(), 1U);
}

// --- A file that has changed on the disk ------------------------------------------------------

class ChangedOnDisk : public RecoveryShell {
 protected:
  ChangedOnDisk() : window_(run_.Open(path_)) {
    Edit(run_, window_.TheMap(), "mine");
    folder_.Write("site.map", Others);
  }

  static constexpr auto Others = "G\tCamp\tN2\tE20\n";
  ProgramRun run_{folder_, now_};
  MapWindowWidget& window_;
};

TEST_F(ChangedOnDisk, ReturnSavesUnderAnotherName) {
  presser_.buttons = {QStringLiteral("Save As...")};
  run_.dialogs->paths = {folder_.Path("mine.map")};
  run_.shell.Commands().Run(CommandSave, window_);
  EXPECT_EQ(presser_.titles, QStringList{QStringLiteral("File Has Changed")});
  EXPECT_EQ(folder_.Read("site.map"), Others);
  EXPECT_TRUE(Holds(folder_.Read("mine.map"), "# mine"));
  EXPECT_EQ(window_.windowTitle(), QStringLiteral("mine.map[*]"));
}

TEST_F(ChangedOnDisk, CancelAndEscapeLeaveAllAsItWas) {
  for (const char* button : {"Cancel", ""}) {
    presser_.buttons = {QString::fromLatin1(button)};
    run_.shell.Commands().Run(CommandSave, window_);
    EXPECT_EQ(folder_.Read("site.map"), Others);
    EXPECT_TRUE(window_.isWindowModified());
  }
}

TEST_F(ChangedOnDisk, OverwriteReplacesIt) {
  presser_.buttons = {QStringLiteral("Overwrite")};
  run_.shell.Commands().Run(CommandSave, window_);
  EXPECT_TRUE(Holds(folder_.Read("site.map"), "# mine"));
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(ChangedOnDisk, ClosingWithSaveAsksTooAndCancelKeepsTheWindow) {
  presser_.buttons = {QStringLiteral("Save"), QStringLiteral("Cancel")};
  EXPECT_FALSE(window_.TryClose());
  EXPECT_EQ(folder_.Read("site.map"), Others);
  EXPECT_TRUE(window_.isVisible());
}

TEST_F(ChangedOnDisk, ARecoveredMapAsksBeforeItReplacesAFileOfAnotherDay) {
  LeaveCopy(path_, "one");
  folder_.Write("site.map", SiteText);
  ProgramRun next(folder_, now_);
  presser_.buttons = {QStringLiteral("OK"), QStringLiteral("Cancel")};
  next.program.Start({});
  next.shell.Commands().Run(CommandSave, *next.shell.Windows().All()[0]);
  EXPECT_EQ(presser_.titles.back(), QStringLiteral("File Has Changed"));
  EXPECT_EQ(folder_.Read("site.map"), SiteText);
}

TEST_F(RecoveryShell, AtTheEndOfTheSessionEachUnsavedMapIsCopiedAtOnce) {
  ProgramRun run(folder_, now_);
  Map& site = run.Open(path_).TheMap();
  Map& other = run.Open(folder_.Write("other.map", SiteText)).TheMap();
  run.Open(folder_.Write("third.map", SiteText));
  Edit(run, site, "one");
  Edit(run, other, "two");
  run.recovery->WriteAll();
  EXPECT_EQ(Copies().size(), 2U);
  // What a copy holds already is not written again.
  site.comments.emplace_back("# unseen");
  run.recovery->WriteAll();
  for (const std::string& copy : Copies()) EXPECT_FALSE(Holds(copy, "# unseen"));
  Edit(run, site, "three");
  run.recovery->WriteAll();
  EXPECT_TRUE(Holds(Copies()[0] + Copies()[1], "# three"));
}

// --- Open editors -----------------------------------------------------------------------------

class EditorDraftsShell : public RecoveryShell {
 protected:
  /// The drafts on the disk, of any run.
  std::vector<std::string> Drafts() const {
    std::vector<std::string> texts;
    if (!fs::exists(folder_.Path("own/recovery"))) return texts;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path("own/recovery"))) {
      if (entry.path().extension() == ".draft") {
        texts.push_back(ReadWholeFile(entry.path().string()).value_or(""));
      }
    }
    return texts;
  }
  static Editors& EditorsOf(ProgramRun& run) { return *run.shell.findChild<Editors*>(); }
  static void Type(EditorWindow& editor, size_t row, size_t column, const char* text) {
    editor.Cells().OpenCell(row, column);
    QTest::keyClicks(&editor.Cells().EditField(), QLatin1String(text));
  }
  static void ClickButton(EditorWindow& editor, const char* name) {
    QTest::mouseClick(editor.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  }
  /// Opens the editor of the trail at a place of the list, lets it be typed in, and ends as a power cut
  /// does.
  void LeaveEditorOf(int trail, const std::function<void(ProgramRun&, EditorWindow&)>& type) {
    std::string draft;
    {
      ProgramRun run(folder_, now_);
      MapWindowWidget& window = run.Open(path_);
      Trail& edited = *std::next(window.TheMap().trails.begin(), trail);
      EditorWindow& editor = EditorsOf(run).OpenTrail(window, &edited);
      type(run, editor);
      draft = Drafts().at(0);
      ClickButton(editor, "cancel");
    }
    EXPECT_TRUE(Drafts().empty());
    RecoveryFolder left(folder_.Path("own/recovery"));
    left.WriteDraft(left.NewDraft(), draft);
  }
  /// Starts the program, which opens the only editor.
  TrailEditorWindow& Restored(ProgramRun& run) {
    run.program.Start({});
    const auto& windows = run.shell.Windows().All();
    EXPECT_TRUE(QTest::qWaitFor([&] { return windows.front()->Dependents().size() == 1; }));
    return static_cast<TrailEditorWindow&>(*windows.front()->Dependents().front());
  }
  /// Types an editor of the trail "Ridge", up to the middle of a cell, and ends as a power cut does.
  void LeaveEditor() {
    LeaveEditorOf(0, [](ProgramRun& run, EditorWindow& editor) {
      Type(editor, 2, ColumnName, "Peak");
      QTest::keyClick(&editor.Cells().EditField(), Qt::Key_Tab);
      Type(editor, 2, ColumnLat, "N1 0.9");
      run.recovery->Drafts().WriteAll();
    });
  }
};

TEST_F(EditorDraftsShell, ADraftIsWrittenSoonAndGoesWithItsEditor) {
  ProgramRun run(folder_, now_);
  MapWindowWidget& window = run.Open(path_);
  EditorWindow& trail = EditorsOf(run).OpenTrail(window, nullptr);
  run.recovery->Drafts().WriteAll();
  EXPECT_TRUE(Drafts().empty()) << "nothing was typed";
  Type(trail, 0, 0, "Camp");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Drafts().size() == 1; }, 5000));
  EditorWindow& range = EditorsOf(run).OpenRange(window, nullptr);
  Type(range, 0, 0, "Trail");
  run.recovery->Drafts().WriteAll();
  EXPECT_EQ(Drafts().size(), 2U);
  ClickButton(trail, "cancel");
  EXPECT_EQ(Drafts().size(), 1U);
  QTest::keyClicks(range.findChild<QLineEdit*>(QStringLiteral("Name")), QStringLiteral("Blue"));
  ClickButton(range, "ok");
  EXPECT_TRUE(Drafts().empty());
  EXPECT_FALSE(window.TheMap().ranges.empty());
}

TEST_F(EditorDraftsShell, TheNextStartOpensTheEditorWithItsRowsAndTheTextInItsCell) {
  LeaveEditor();
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("Recover Trail Ridge, in site.map|OK")};
  run.program.Start({});
  ASSERT_EQ(run.shell.Windows().All().size(), 1U);
  MapWindowWidget& window = *run.shell.Windows().All().front();
  ASSERT_TRUE(QTest::qWaitFor([&] { return window.Dependents().size() == 1; }));
  auto& editor = static_cast<TrailEditorWindow&>(*window.Dependents().front());
  EXPECT_EQ(editor.Editor().Edited(), &window.TheMap().trails.front());
  ASSERT_EQ(editor.Editor().RowCount(), 3U);
  EXPECT_EQ(editor.Editor().GetCell(2, 0), "Peak");
  EXPECT_EQ(editor.Cells().EditField().text(), QStringLiteral("N1 0.9"));
  EXPECT_EQ(Drafts().size(), 1U) << "kept until the editor closes";
  ClickButton(editor, "ok");
  EXPECT_TRUE(Drafts().empty());
  EXPECT_EQ(window.TheMap().trails.front().points.size(), 3U);
  EXPECT_EQ(window.TheMap().trails.front().points[2]->name, "Peak");
}

TEST_F(EditorDraftsShell, LaterKeepsADraftAndDiscardRemovesIt) {
  LeaveEditor();
  {
    ProgramRun run(folder_, now_);
    presser_.buttons = {QStringLiteral("Later Trail Ridge, in site.map|OK")};
    run.program.Start({path_});
    EXPECT_EQ(Drafts().size(), 1U);
  }
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("Discard Trail Ridge, in site.map|OK")};
  run.program.Start({path_});
  EXPECT_TRUE(Drafts().empty());
}

// The draft went to the first follow of that animal on that date. OK then overwrote it, and the saved
// file had the stops of the afternoon twice.
TEST_F(EditorDraftsShell, TheEditorOfOneOfTwoFollowsComesBackToThatOne) {
  path_ =
      folder_.Write("two.map",
                    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tN1\tE10\nG\t8:30\tN1 0.1'\tE10\n"
                    "T\t\tPapio\tAna\t2020-3-1\nG\t14:00\tN1 0.2'\tE10\nG\t14:30\tN1 0.3'\tE10\n");
  LeaveEditorOf(1, [](ProgramRun& run, EditorWindow& editor) {
    Type(editor, 1, ColumnLat, "N1 0.4");
    QTest::keyClick(&editor.Cells().EditField(), Qt::Key_Tab);
    run.recovery->Drafts().WriteAll();
  });
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("Recover Trail 2020-3-1 Ana, in two.map|OK"),
                      QStringLiteral("Yes")};
  TrailEditorWindow& editor = Restored(run);
  Map& map = editor.MapSide()->TheMap();
  EXPECT_EQ(editor.Editor().Edited(), &*std::next(map.trails.begin()));
  ClickButton(editor, "ok");
  EXPECT_EQ(presser_.titles.back(), QStringLiteral("Rename trail"));
  std::vector<std::string> stops;
  for (const Trail& trail : map.trails) {
    for (const Point* point : trail.points) stops.push_back(point->name);
  }
  EXPECT_EQ(stops, (std::vector<std::string>{"8:00", "8:30", "14:00", "14:30"}));
  EXPECT_NEAR(map.trails.begin()->points[1]->geo.lat, 1 + 0.1 / 60, 1e-9);
  EXPECT_NEAR(std::next(map.trails.begin())->points[1]->geo.lat, 1 + 0.4 / 60, 1e-9);
}

TEST_F(EditorDraftsShell, OkAsksIfTheFileHasChangedSinceTheCrash) {
  LeaveEditor();
  std::string text = SiteText;
  text.replace(text.find("0.6'"), 4, "0.7'");
  folder_.Write("site.map", text);
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("Recover Trail Ridge, in site.map|OK"),
                      QStringLiteral("Cancel")};
  TrailEditorWindow& editor = Restored(run);
  ClickButton(editor, "ok");
  EXPECT_EQ(presser_.titles.back(), QStringLiteral("Trail changed"));
  EXPECT_EQ(editor.MapSide()->TheMap().trails.front().points.size(), 2U);
  EXPECT_EQ(Drafts().size(), 1U);
  ClickButton(editor, "cancel");
}

TEST_F(EditorDraftsShell, ADraftFollowsItsMapToAnotherName) {
  LeaveEditorOf(0, [this](ProgramRun& run, EditorWindow& editor) {
    Type(editor, 2, ColumnName, "Peak");
    run.recovery->Drafts().WriteAll();
    run.dialogs->paths = {folder_.Path("other.map")};
    MapWindowWidget& window = *editor.MapSide();
    run.shell.Commands().Run(CommandSaveAs, window);
    EXPECT_EQ(window.TheMap().fileName, folder_.Path("other.map"));
    EXPECT_TRUE(Holds(Drafts().at(0), "map=" + folder_.Path("other.map"))) << "without a new key";
  });
  ProgramRun run(folder_, now_);
  presser_.buttons = {QStringLiteral("Recover Trail Ridge, in other.map|OK")};
  TrailEditorWindow& editor = Restored(run);
  EXPECT_EQ(editor.MapSide()->TheMap().fileName, folder_.Path("other.map"));
  EXPECT_EQ(editor.Editor().Edited(), &editor.MapSide()->TheMap().trails.front());
  EXPECT_EQ(editor.Cells().EditField().text(), QStringLiteral("Peak"));
  ClickButton(editor, "cancel");
}

TEST_F(EditorDraftsShell, ADraftOfAnUntitledMapFollowsItToItsFile) {
  ProgramRun run(folder_, now_);
  MapWindowWidget& window = run.shell.NewMap();
  EditorWindow& editor = EditorsOf(run).OpenTrail(window, nullptr);
  Type(editor, 0, ColumnName, "Peak");
  run.recovery->Drafts().WriteAll();
  EXPECT_TRUE(Holds(Drafts().at(0), "map=Untitled"));
  run.dialogs->paths = {folder_.Path("named.map")};
  run.shell.Commands().Run(CommandSaveAs, window);
  EXPECT_TRUE(Holds(Drafts().at(0), "map=" + folder_.Path("named.map")));
  ClickButton(editor, "cancel");
}

// It was passed over without a word, at each start.
TEST_F(EditorDraftsShell, ADamagedDraftIsKeptWithAMessage) {
  const auto damaged = [this] {
    std::vector<std::string> texts;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path("own/recovery"))) {
      if (entry.path().extension() == ".damaged") {
        texts.push_back(ReadWholeFile(entry.path().string()).value_or(""));
      }
    }
    return texts;
  };
  LeaveEditor();
  std::string text = Drafts().at(0);
  text.replace(text.find("Peak"), 4, "Pool");
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path("own/recovery"))) {
    if (entry.path().extension() == ".draft") WriteFileAtomically(entry.path().string(), text);
  }
  {
    ProgramRun run(folder_, now_);
    presser_.buttons = {QStringLiteral("OK")};
    run.program.Start({path_});
    ASSERT_EQ(presser_.texts.size(), 1);
    EXPECT_TRUE(presser_.texts[0].contains(QStringLiteral("its copy is damaged")));
    EXPECT_TRUE(Drafts().empty());
    EXPECT_EQ(damaged(), std::vector<std::string>{text});
  }
  ProgramRun run(folder_, now_);
  run.program.Start({path_});
  EXPECT_EQ(presser_.texts.size(), 1) << "said once";
  EXPECT_EQ(damaged(), std::vector<std::string>{text});
}

}  // namespace
}  // namespace orvane

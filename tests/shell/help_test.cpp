// The help: finding its file, F1 from every window, and the window that shows it.

#include "shell/help/help_file.h"
#include "shell/help/help_topics.h"
#include "shell/help/help_window.h"
#include "shell/map/orientation_dialog.h"
#include "shell/shell_case.h"

#include <QDir>
#include <QHelpContentWidget>
#include <QHelpEngineCore>
#include <QHelpIndexWidget>
#include <QHelpSearchQueryWidget>
#include <QHelpSearchResultWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>

#include <filesystem>
#include <set>

namespace orvane {
namespace {

constexpr auto Title = "Please Find and Open help file...";
constexpr auto UnreadableText = "Help file is unreadable, please choose another.";
constexpr auto InvalidText = "Invalid help file, please choose another.";

class HelpTest : public ShellCase {
 protected:
  /// Puts the help file where the program keeps its own files.
  void HaveHelpFile() {
    shell_.TheSettings().ownDirectory = folder_.Path();
    std::filesystem::copy_file(HELP_FILE, folder_.Path() + "/Orvane.qch");
  }

  static HelpWindow* ShownHelp() {
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* widget : all) {
      auto* window = qobject_cast<HelpWindow*>(widget);
      if (window != nullptr && window->isVisible()) return window;
    }
    return nullptr;
  }

  /// The page that is shown, such as "window.html#the-lists"; empty without a help window.
  static std::string Page() {
    const HelpWindow* window = ShownHelp();
    if (window == nullptr) return {};
    return window->ShownPage().toString().section(QStringLiteral("/guide/"), 1).toStdString();
  }

  static void PressF1(QWidget& widget) {
    widget.setFocus();
    QTest::keyClick(&widget, Qt::Key_F1);
  }

  template <typename Part>
  static Part& PartOf(HelpWindow& window, const char* name) {
    return *window.findChild<Part*>(QString::fromLatin1(name));
  }
};

TEST_F(HelpTest, EveryTopicIsInTheHelpFile) {
  HaveHelpFile();
  const QString collection = QString::fromStdString(folder_.Path() + "/look.qhc");
  QHelpEngineCore engine(collection);
  engine.setReadOnly(false);
  ASSERT_TRUE(engine.setupData());
  ASSERT_TRUE(engine.registerDocumentation(QStringLiteral(HELP_FILE)));
  std::set<std::string_view> names;
  for (const HelpTopic& topic : AllHelpTopics()) {
    EXPECT_TRUE(names.insert(topic.objectName).second) << topic.objectName;
    const QString page = QString::fromStdString(std::string(topic.page));
    const QByteArray html = engine.fileData(
        QUrl(QStringLiteral("qthelp://orvane.guide/orvane/guide/") + page.section(u'#', 0, 0)));
    EXPECT_FALSE(html.isEmpty()) << topic.page;
    const QString anchor = page.section(u'#', 1);
    if (anchor.isEmpty()) continue;
    EXPECT_TRUE(html.contains("name=\"" + anchor.toUtf8() + "\"")) << topic.page;
  }
}

TEST_F(HelpTest, EveryMenuOfTheBarHasATopic) {
  MapWindowWidget& window = OpenNew();
  const auto entries = window.menuBar()->actions();
  EXPECT_EQ(entries.size(), static_cast<qsizetype>(AllMenus().size()));
  for (const QAction* entry : entries) {
    EXPECT_FALSE(HelpPageOf(entry->menu()->objectName()).empty()) << entry->text().toStdString();
  }
}

TEST_F(HelpTest, TopicsOfEntriesAreThoseOfCommands) {
  for (const HelpTopic& topic : AllHelpTopics()) {
    if (!topic.objectName.starts_with("command")) continue;
    EXPECT_NE(FindCommand(std::stoi(std::string(topic.objectName.substr(7)))), nullptr)
        << topic.objectName;
  }
}

TEST_F(HelpTest, IsLookedForAtTheFirstUseOnly) {
  MapWindowWidget& window = OpenNew();
  EXPECT_TRUE(dialogs_->questions.empty());
  HaveHelpFile();
  PressF1(window.View());
  EXPECT_TRUE(dialogs_->questions.empty());
  EXPECT_EQ(Page(), "window.html#moving-about");
  // Once it is found it stays so.
  ShownHelp()->close();
  PressF1(window.View());
  EXPECT_TRUE(dialogs_->questions.empty());
  ASSERT_NE(ShownHelp(), nullptr);
}

TEST_F(HelpTest, AMissingFileIsAskedForAndCancelGivesUp) {
  MapWindowWidget& window = OpenNew();
  PressF1(window.View());
  ASSERT_EQ(dialogs_->questions.size(), 1U);
  EXPECT_EQ(dialogs_->questions[0].title, Title);
  EXPECT_EQ(dialogs_->questions[0].file.directory, folder_.Path());
  EXPECT_EQ(dialogs_->questions[0].file.name, "Orvane.qch");
  EXPECT_EQ(dialogs_->questions[0].file.type, "qch");
  EXPECT_FALSE(dialogs_->questions[0].save);
  EXPECT_TRUE(Texts().empty());
  EXPECT_EQ(ShownHelp(), nullptr);
  // The next use asks again.
  PressF1(window.View());
  EXPECT_EQ(dialogs_->questions.size(), 2U);
}

TEST_F(HelpTest, AFileThatIsNoHelpFileIsRefusedUntilAGoodOneIsChosen) {
  MapWindowWidget& window = OpenNew();
  dialogs_->paths = {folder_.Path() + "/missing.qch", folder_.Write("text.qch", "no help\n"),
                     folder_.Write("empty.qch", ""), HELP_FILE};
  PressF1(window.View());
  EXPECT_EQ(dialogs_->questions.size(), 4U);
  EXPECT_EQ(Texts(), (std::vector<std::string>{UnreadableText, InvalidText, InvalidText}));
  EXPECT_EQ(Page(), "window.html#moving-about");
}

TEST_F(HelpTest, ADirectoryIsUnreadable) {
  EXPECT_EQ(LookAtHelpFile(folder_.Path()), HelpFileState::Unreadable);
  EXPECT_EQ(LookAtHelpFile(HELP_FILE), HelpFileState::Good);
}

TEST_F(HelpTest, ADialogThatFailsIsFatal) {
  MapWindowWidget& window = OpenNew();
  dialogs_->fails = true;
  PressF1(window.View());
  EXPECT_EQ(Texts(), std::vector<std::string>{"Error getting file name."});
  EXPECT_EQ(messages_.Entries().back().severity, Severity::Fatal);
}

TEST_F(HelpTest, ABadFileInTheOwnDirectoryIsNotTaken) {
  MapWindowWidget& window = OpenNew();
  shell_.TheSettings().ownDirectory = folder_.Path();
  folder_.Write("Orvane.qch", "no help\n");
  PressF1(window.View());
  EXPECT_EQ(dialogs_->questions.size(), 1U);
}

TEST_F(HelpTest, IsLookedForInTheOwnDirectoryFirst) {
  EXPECT_EQ(HelpFilePlaces("/own", "/usr/bin"),
            (std::vector<std::string>{"/own/Orvane.qch", "/usr/bin/Orvane.qch",
                                      "/usr/bin/../share/orvane/Orvane.qch"}));
  EXPECT_EQ(HelpFilePlaces("", "/usr/bin").size(), 2U);
}

TEST_F(HelpTest, F1LeadsToThePartOfTheWindowThatHasTheFocus) {
  HaveHelpFile();
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  PressF1(*window.findChild<QWidget*>(QStringLiteral("trailList")));
  EXPECT_EQ(Page(), "window.html#the-lists");
  window.activateWindow();
  PressF1(window.View());
  EXPECT_EQ(Page(), "window.html#moving-about");
  PressF1(*ShownHelp()->findChild<QTextBrowser*>());
  EXPECT_EQ(Page(), "README.html");
}

TEST_F(HelpTest, F1WithAnotherKeyIsNotHelp) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  QTest::keyClick(&window.View(), Qt::Key_F1, Qt::ShiftModifier);
  EXPECT_EQ(ShownHelp(), nullptr);
}

TEST_F(HelpTest, F1OnAnOpenMenuLeadsToTheEntry) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  auto* menu = window.menuBar()->findChild<QMenu*>(QStringLiteral("menuFile"));
  menu->popup(QPoint(0, 0));
  menu->setActiveAction(&ActionOf(window, CommandSaveAs));
  QTest::keyClick(menu, Qt::Key_F1);
  EXPECT_EQ(Page(), "saving.html");
  EXPECT_FALSE(menu->isVisible());
  // An entry without a topic of its own has that of its menu.
  menu->popup(QPoint(0, 0));
  menu->setActiveAction(&ActionOf(window, CommandNewMap));
  QTest::keyClick(menu, Qt::Key_F1);
  EXPECT_EQ(Page(), "commands.html#file");
}

TEST_F(HelpTest, F1InADialogOpensAWindowOfTheDialog) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  bool looked = false;
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<OrientationDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    QTest::keyClick(dialog->focusWidget() != nullptr ? dialog->focusWidget() : dialog, Qt::Key_F1);
    EXPECT_EQ(Page(), "window.html#which-way-is-up");
    // Only a child of the dialog can be used while that is open.
    EXPECT_EQ(ShownHelp()->parentWidget(), dialog);
    looked = true;
    dialog->reject();
  });
  ActionOf(window, CommandOrientation).trigger();
  EXPECT_TRUE(looked);
  EXPECT_EQ(ShownHelp(), nullptr);
}

TEST_F(HelpTest, AFileNamedFromTheCurrentDirectoryHasItsPages) {
  HelpWindow window(QDir::current().relativeFilePath(QStringLiteral(HELP_FILE)), nullptr);
  window.ShowPage("ranges.html");
  EXPECT_GT(PartOf<QTextBrowser>(window, "helpPage").toPlainText().size(), 300);
}

TEST_F(HelpTest, TheMenuLeadsToTheContents) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  EXPECT_TRUE(IsEnabled(window, CommandHelp));
  ActionOf(window, CommandHelp).trigger();
  EXPECT_EQ(Page(), "README.html");
}

TEST_F(HelpTest, TheOldNumbersOfHelpCommandsLeadToTheContents) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  shell_.Commands().Run(32449, window);
  shell_.Commands().Run(32463, window);
  EXPECT_EQ(ShownHelp(), nullptr);
  for (int id = 32450; id <= 32462; ++id) {
    shell_.Commands().Run(id, window);
    ASSERT_NE(ShownHelp(), nullptr) << id;
    EXPECT_EQ(Page(), "README.html");
    ShownHelp()->close();
  }
}

TEST_F(HelpTest, ContentsLeadToEveryChapter) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  ActionOf(window, CommandHelp).trigger();
  HelpWindow& help = *ShownHelp();
  auto& contents = PartOf<QHelpContentWidget>(help, "helpContents");
  ASSERT_TRUE(QTest::qWaitFor([&] { return contents.model()->rowCount() > 20; }));
  for (int row = 0; row < contents.model()->rowCount(); ++row) {
    const QModelIndex chapter = contents.model()->index(row, 0);
    contents.setCurrentIndex(chapter);
    QTest::keyClick(&contents, Qt::Key_Return);
    auto& text = PartOf<QTextBrowser>(help, "helpPage");
    EXPECT_EQ(text.documentTitle(), chapter.data().toString());
    EXPECT_GT(text.toPlainText().size(), 300) << Page();
  }
}

TEST_F(HelpTest, TheIndexFindsAHeading) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  ActionOf(window, CommandHelp).trigger();
  HelpWindow& help = *ShownHelp();
  PartOf<QTabWidget>(help, "helpTabs").setCurrentIndex(1);
  auto& index = PartOf<QHelpIndexWidget>(help, "helpIndex");
  ASSERT_TRUE(QTest::qWaitFor([&] { return index.model()->rowCount() > 50; }));
  auto& word = PartOf<QLineEdit>(help, "helpWord");
  QTest::keyClicks(&word, QStringLiteral("MCP"));
  QTest::keyClick(&word, Qt::Key_Return);
  EXPECT_EQ(Page(), "ranges.html#mcp-area");
}

TEST_F(HelpTest, TheSearchFindsAWord) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  ActionOf(window, CommandHelp).trigger();
  HelpWindow& help = *ShownHelp();
  PartOf<QTabWidget>(help, "helpTabs").setCurrentIndex(2);
  auto& query = PartOf<QHelpSearchQueryWidget>(help, "helpQuery");
  auto& results = PartOf<QHelpSearchResultWidget>(help, "helpResults");
  auto* words = query.findChild<QLineEdit*>();
  ASSERT_NE(words, nullptr);
  // The pages are indexed in the background; until then nothing is found.
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        if (!words->isEnabled()) return false;
        words->setText(QStringLiteral("deviation"));
        QTest::keyClick(words, Qt::Key_Return);
        QTest::qWait(50);
        auto* found = results.findChild<QTextBrowser*>();
        return found != nullptr && found->toPlainText().contains(QStringLiteral("The map file"));
      },
      10000));
}

TEST_F(HelpTest, EscapeAndCtrlWCloseItAndCtrlQEndsTheProgram) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  for (const auto& [key, modifiers] :
       {std::pair{Qt::Key_Escape, Qt::NoModifier}, std::pair{Qt::Key_W, Qt::ControlModifier}}) {
    ActionOf(window, CommandHelp).trigger();
    ASSERT_NE(ShownHelp(), nullptr);
    EXPECT_EQ(ShownHelp()->windowTitle(), QStringLiteral("Help"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(ShownHelp()));
    QTest::keyClick(ShownHelp()->findChild<QTextBrowser*>(), key, modifiers);
    EXPECT_EQ(ShownHelp(), nullptr) << key;
  }
  ActionOf(window, CommandHelp).trigger();
  ASSERT_TRUE(QTest::qWaitForWindowActive(ShownHelp()));
  QTest::keyClick(ShownHelp(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(ends_, 1);
}

TEST_F(HelpTest, TheKeyOfATabMovesTheFocusIntoIt) {
  HaveHelpFile();
  ActionOf(OpenNew(), CommandHelp).trigger();
  HelpWindow& help = *ShownHelp();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
  auto* words = PartOf<QHelpSearchQueryWidget>(help, "helpQuery").findChild<QLineEdit*>();
  for (int i = 0; i < 2; ++i) {  // also where the tab is shown already
    PartOf<QTextBrowser>(help, "helpPage").setFocus();
    QTest::keyClick(&help, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return words->hasFocus(); })) << i;
  }
  QTest::keyClick(&help, Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return PartOf<QLineEdit>(help, "helpWord").hasFocus(); }));
  QTest::keyClick(&help, Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return PartOf<QHelpContentWidget>(help, "helpContents").hasFocus(); }));
}

TEST_F(HelpTest, LinksLeadOnAndBackLeadsBack) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  PressF1(window.View());
  HelpWindow& help = *ShownHelp();
  auto& text = PartOf<QTextBrowser>(help, "helpPage");
  text.setSource(help.ShownPage().resolved(QUrl(QStringLiteral("drawing.html#label-limits"))));
  EXPECT_EQ(Page(), "drawing.html#label-limits");
  EXPECT_EQ(text.documentTitle(), QStringLiteral("Drawing"));
  QTest::keyClick(&text, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Page(), "window.html#moving-about");
  auto& bar = PartOf<QToolBar>(help, "helpBar");
  QTest::mouseClick(bar.widgetForAction(bar.actions().constLast()), Qt::LeftButton);
  EXPECT_EQ(Page(), "README.html");
}

TEST_F(HelpTest, EveryControlHasAName) {
  HaveHelpFile();
  MapWindowWidget& window = OpenNew();
  ActionOf(window, CommandHelp).trigger();
  for (const char* name : {"helpTabs", "helpPage", "helpContents", "helpIndex", "helpWord",
                           "helpQuery", "helpResults"}) {
    auto* part = ShownHelp()->findChild<QWidget*>(QString::fromLatin1(name));
    ASSERT_NE(part, nullptr) << name;
    EXPECT_FALSE(part->accessibleName().isEmpty()) << name;
  }
}

}  // namespace
}  // namespace orvane

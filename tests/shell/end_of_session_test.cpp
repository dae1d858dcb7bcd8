#include "shell/end_of_session.h"

#include "shell/comment_edit.h"
#include "shell/progress/busy_work.h"
#include "shell/shell_case.h"

#include <csignal>
#include <string>

namespace orvane {
namespace {

class EndOfSession : public ShellCase {
 protected:
  EndOfSession() {
    shell_.Keep(
        std::make_unique<ScriptedPreferences>(nullptr, [this] { done_ += "preferences "; }));
    shell_.Keep(std::make_unique<ScriptedCopies>([this] { done_ += "copies "; }));
  }

  std::string done_;
};

class EndSignalsTest : public EndOfSession {
 protected:
  static auto HandlerOf(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler;
  }
};

TEST_F(EndOfSession, PreferencesAndCopiesAreWrittenWithoutAQuestion) {
  MapWindowWidget& window = OpenNew();
  AddComment(shell_, window.TheMap());
  EXPECT_TRUE(WriteBeforeEnd(shell_));
  EXPECT_EQ(done_, "preferences copies ");
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(EndOfSession, LongWorkIsStoppedAndMapsInTheMidstOfItAreNotCopied) {
  {
    BusyWork busy(workspace_, boxes_, QStringLiteral("Opening site.map"));
    EXPECT_FALSE(WriteBeforeEnd(shell_));
    EXPECT_TRUE(busy.Canceled());
  }
  EXPECT_EQ(done_, "preferences ");
}

TEST_F(EndOfSession, CopiesAreWrittenOnceLongWorkHasStopped) {
  {
    BusyWork busy(workspace_, boxes_, QStringLiteral("Opening site.map"));
    WriteAtEndOfSession(shell_);
    EXPECT_EQ(done_, "preferences ");
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return done_.ends_with("copies "); })) << done_;
}

TEST_F(EndSignalsTest, ASignalEndsTheProgramAfterEverythingIsWritten) {
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
    done_.clear();
    EndSignals signals(shell_, around_);
    std::raise(signal);
    EXPECT_EQ(done_, "");  // nothing is done within the signal itself
    EXPECT_TRUE(QTest::qWaitFor([&] { return around_.endSignal == signal; }));
    EXPECT_EQ(done_, "preferences copies ");
  }
}

TEST_F(EndSignalsTest, DuringLongWorkItWaitsUntilTheWorkHasStopped) {
  EndSignals signals(shell_, around_);
  {
    BusyWork busy(workspace_, boxes_, QStringLiteral("Opening site.map"));
    std::raise(SIGTERM);
    QApplication::processEvents();
    EXPECT_TRUE(busy.Canceled());
    EXPECT_EQ(done_.find("copies"), std::string::npos);
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return around_.endSignal == SIGTERM; }));
  EXPECT_NE(done_.find("copies"), std::string::npos);
}

TEST_F(EndSignalsTest, ASignalThatWasIgnoredStaysSo) {
  std::signal(SIGHUP, SIG_IGN);
  {
    const EndSignals signals(shell_, around_);
    EXPECT_EQ(HandlerOf(SIGHUP), SIG_IGN);
    EXPECT_NE(HandlerOf(SIGTERM), SIG_DFL);
  }
  EXPECT_EQ(HandlerOf(SIGHUP), SIG_IGN);
  EXPECT_EQ(HandlerOf(SIGTERM), SIG_DFL);
  std::signal(SIGHUP, SIG_DFL);
}

}  // namespace
}  // namespace orvane

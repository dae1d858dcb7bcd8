// A program that saves all the time is killed at random moments, as by a power cut or the system.
// The old or the new file must then be whole, and left-over files must not disturb later work.

#include "commands/save_map.h"
#include "mapfile/open_map.h"
#include "mapfile/recovery_folder.h"
#include "support/scripted_questions.h"
#include "support/temporary_folder.h"
#include "view/preferences.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr int Kills = 200;
constexpr unsigned Seed = 20040519;

/// A program that repeats `step` endlessly, from 0 on, until it is killed.
class Victim {
 public:
  explicit Victim(const std::function<void(int)>& step) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    process_ = ::fork();
    if (process_ == 0) {
      step(0);
      // Sent once it is at work, so that no kill comes before the program has begun.
      const char ready = '!';
      if (::write(ends[1], &ready, 1) != 1) ::_exit(1);
      for (int i = 1;; ++i) step(i);
    }
    ::close(ends[1]);
    char ready = 0;
    EXPECT_EQ(::read(ends[0], &ready, 1), 1);
    ::close(ends[0]);
  }
  ~Victim() {
    ::kill(process_, SIGKILL);
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, 0), process_);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself";
  }
  Victim(const Victim&) = delete;
  Victim& operator=(const Victim&) = delete;

 private:
  pid_t process_;
};

class KilledSaving : public testing::Test {
 protected:
  KilledSaving() : random_(Seed) { RecordProperty("seed", static_cast<int>(Seed)); }

  /// Lets `step` run for a random while, and kills it.
  void RunAndKill(const std::function<void(int)>& step) {
    constexpr unsigned LongestRun = 4000;
    const std::chrono::microseconds run(random_() % LongestRun);
    const Victim victim(step);
    std::this_thread::sleep_for(run);
  }

  /// The files that a killed program was still writing.
  static long HalfWritten(const std::string& directory) {
    long count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
      if (entry.path().extension() == ".tmp") ++count;
    }
    return count;
  }

  /// A map of some ten thousand bytes, which differs in each of its lines by `mark`.
  static std::string MapText(char mark) {
    std::string text = "T\tRidge\tTrail\n";
    constexpr int Points = 300;
    for (int i = 0; i < Points; ++i) {
      text += "G\t" + std::string(1, mark) + std::to_string(i) + "\tN1 " + std::to_string(i % 60) +
              "'\tE10\n";
    }
    return text;
  }

  TemporaryFolder folder_;
  std::mt19937 random_;
};

TEST_F(KilledSaving, LeavesTheOldMapOrTheNewOne) {
  // Two maps that take turns under one name, each saved by the same flow as in the program.
  ScriptedMessages messages;
  Workspace workspace(messages);
  workspace.today = [] { return PackDate(2004, 5, 19); };
  ScriptedDialogs dialogs;
  FileSpecifications files;
  const SaveContext context{.dialogs = dialogs,
                            .files = files,
                            .defaultDirectory = folder_.Path(),
                            .saved = [](Map& map) { map.flags |= MapDirty; }};
  const std::string path = folder_.Path("site.map");
  std::array<Map*, 2> maps{};
  std::array<std::string, 2> texts;
  const auto save = [&](size_t turn) {
    // Each of the two would ask about the file of the other.
    maps[turn]->fileMark = MarkOf(ReadWholeFile(path).value_or(""));
    return SaveChangedMaps(*maps[turn], context);
  };
  for (const size_t i : {0U, 1U}) {
    maps[i] = &OpenMap(workspace, folder_.Write(i == 0 ? "a.map" : "b.map", MapText("ab"[i])));
    maps[i]->flags |= MapDirty;
    maps[i]->fileName = path;
    EXPECT_TRUE(save(i));
    texts[i] = folder_.Read("site.map");
    EXPECT_GT(texts[i].size(), 5000U);
  }
  ASSERT_TRUE(texts[0] != texts[1]);

  int hits = 0;
  std::array<int, 2> found{};
  for (int kill = 0; kill < Kills; ++kill) {
    const long before = HalfWritten(folder_.Path());
    RunAndKill([&](int i) {
      if (!save(static_cast<size_t>(i % 2))) ::_exit(1);
    });
    if (HalfWritten(folder_.Path()) > before) ++hits;
    const std::string text = folder_.Read("site.map");
    const auto* const which = std::find(texts.begin(), texts.end(), text);
    ASSERT_NE(which, texts.end()) << "after kill " << kill << " of seed " << Seed;
    ++found[static_cast<size_t>(which - texts.begin())];
  }
  // The run was long enough to be hit in the middle of a save, and to end either way.
  EXPECT_GT(hits, 0);
  EXPECT_GT(found[0], 0);
  EXPECT_GT(found[1], 0);
  // Left-over files are hidden, and neither reading nor saving the map is affected.
  for (const auto& entry : fs::directory_iterator(folder_.Path())) {
    if (entry.path().extension() == ".tmp") {
      EXPECT_TRUE(entry.path().filename().string().starts_with(".orvane-"));
    }
  }
  Workspace later(messages);
  Map& map = OpenMap(later, path);
  map.flags |= MapDirty;
  EXPECT_TRUE(SaveChangedMaps(map, context));
  EXPECT_TRUE(messages.Entries().empty());
  EXPECT_TRUE(messages.Questions().empty());
}

TEST_F(KilledSaving, LeavesTheOldPreferencesOrTheNewOnes) {
  ScriptedMessages messages;
  Workspace workspace(messages);
  const std::string path = folder_.Path(PreferencesName);
  const std::array<WindowPreferences, 2> settings{
      WindowPreferences{.trailWidth = 111, .trailHeight = 222, .savedView = {}},
      WindowPreferences{.trailWidth = 3, .trailHeight = 4, .savedView = {}}};
  const auto text = [&](size_t i) { return PreferencesText(workspace, settings[i], {}); };
  for (int kill = 0; kill < Kills; ++kill) {
    RunAndKill([&](int i) {
      WritePreferences(workspace, path, settings[static_cast<size_t>(i % 2)], {});
    });
    const std::string content = folder_.Read(PreferencesName);
    ASSERT_TRUE(content == text(0) || content == text(1))
        << "after kill " << kill << " of seed " << Seed << ": " << content;
  }
  WindowPreferences read;
  ReadPreferences(workspace, path, read, [](const std::string&) { FAIL(); });
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(KilledSaving, LeavesARecoveryCopyWholeForTheNextProgram) {
  const std::string directory = folder_.Path("recovery");
  const std::array<std::string, 2> texts{MapText('a'), MapText('b')};
  const RecoveryRecord record{.fileName = folder_.Path("site.map"),
                              .original = FileMark{.size = 1, .hash = 2}};
  int copies = 0;
  for (int kill = 0; kill < Kills; ++kill) {
    SCOPED_TRACE(testing::Message() << "after kill " << kill << " of seed " << Seed);
    std::unique_ptr<RecoveryFolder> own;
    std::string slot;
    RunAndKill([&](int i) {
      if (i == 0) {
        own = std::make_unique<RecoveryFolder>(directory);
        slot = own->NewSlot();
      }
      if (own->Write(slot, record, texts[static_cast<size_t>(i % 2)]) != WriteResult::Done) {
        ::_exit(1);
      }
      // Now and then the map is saved, and its copy is deleted.
      if (i % 5 == 4) own->Remove(slot);
    });
    {
      RecoveryFolder next(directory);
      const std::vector<RecoveryCopy> found = next.TakeAbandoned();
      ASSERT_LE(found.size(), 1U);
      for (const RecoveryCopy& copy : found) {
        EXPECT_EQ(copy.record.fileName, record.fileName);
        EXPECT_EQ(copy.record.original, record.original);
        const std::string text = ReadWholeFile(RecoveryCopyPath(copy.slot)).value_or("");
        ASSERT_TRUE(text == texts[0] || text == texts[1]);
        next.Remove(copy.slot);
        ++copies;
      }
    }
    // Neither half a file nor a lock outlives the program that comes next.
    ASSERT_TRUE(fs::is_empty(directory));
  }
  EXPECT_GT(copies, Kills / 2);
}

}  // namespace
}  // namespace orvane

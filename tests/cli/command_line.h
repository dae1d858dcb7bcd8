#pragma once

#include "support/temporary_folder.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace orvane {

inline constexpr const char* Site =
    "T\tMain\nG\tCamp\tN0\tE0\t10\nG\tRidge\tN0\tE0.01\t30\nG\tM\xFChle\tN0\tE0.02\t30\n"
    "T\tOdd\nC\tOdd20\tCamp\t10\t0\nC\tOdd40\tOdd20\t20\t0\nC\tOdd30\tOdd40\t10\t0\n";

/// What one run of the batch tool left.
struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

/// Runs the tool in a folder of its own, with site.map in it.
struct CommandLine : testing::Test {
  TemporaryFolder folder;

  CommandLine() { folder.Write("site.map", Site); }

  static std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
  }
  /// \param redirection  of standard output; to a file that is read here if not given
  /// \param before       what the shell does first, such as "ulimit -v 40000 && "
  Outcome Do(const std::vector<std::string>& arguments, const std::string& redirection = ">out",
             const std::string& before = "") {
    std::string line = "cd " + Quoted(folder.Path()) + " && " + before + Quoted(ORVANE_CLI);
    for (const std::string& argument : arguments) line += " " + Quoted(argument);
    line += " " + redirection + " 2>err </dev/null";
    Outcome run;
    const int ended = std::system(line.c_str());
    if (WIFEXITED(ended)) run.status = WEXITSTATUS(ended);
    run.out = folder.Read("out");
    run.err = folder.Read("err");
    return run;
  }

  void ExpectWrongUsage(const std::vector<std::string>& arguments, const std::string& said) {
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 2) << said;
    EXPECT_EQ(run.out, "") << said;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_TRUE(run.err.ends_with('\n'));
    EXPECT_NE(run.err.find(said), std::string::npos) << run.err;
  }
};

}  // namespace orvane

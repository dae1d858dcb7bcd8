#include "formats/format_module.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Runs a program to its end, without its output, and reports the most memory that it had.
void RunProgram(benchmark::State& state, std::array<const char*, 4> arguments) {
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  long kilobytes = 0;
  for (auto _ : state) {
    pid_t process = 0;
    int status = 0;
    rusage used = {};
    if (posix_spawn(&process, arguments[0], &quiet, nullptr, const_cast<char**>(arguments.data()),
                    environ) != 0 ||
        wait4(process, &status, 0, &used) != process || status != 0) {
      state.SkipWithError("the program failed");
      break;
    }
    kilobytes = used.ru_maxrss;
  }
  posix_spawn_file_actions_destroy(&quiet);
  state.counters["KiB"] = static_cast<double>(kilobytes);
}

/// A command that needs no module.
void DumpATinyMap(benchmark::State& state) {
  RunProgram(state, {ORVANE_CLI, "dump", FIRST_MAP, nullptr});
}
BENCHMARK(DumpATinyMap)->Unit(benchmark::kMillisecond)->UseRealTime();

#ifdef ORVANE_WINDOWS
/// The start of the window program with its libraries, up to its first line.
void StartTheWindowProgram(benchmark::State& state) {
  RunProgram(state, {ORVANE_WINDOWS, "--version", nullptr, nullptr});
}
BENCHMARK(StartTheWindowProgram)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif

/// What only a command that uses the module pays.
void LoadTheModule(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(orvane::LoadFormatModule().module);
}
BENCHMARK(LoadTheModule)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

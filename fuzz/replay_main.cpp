// Replaces libFuzzer where a fuzz target is built as a test: runs it once on each file of the folders
// and files named on the command line. A fault shows as a crash or a sanitizer's report; the last
// line of the output is then the name of the file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// \return the regular files of `paths` and of the folders among them, sorted; nothing from a path
///         that cannot be read
std::vector<std::filesystem::path> InputsOf(const std::vector<std::string>& paths) {
  std::vector<std::filesystem::path> inputs;
  for (const std::string& path : paths) {
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error)) inputs.emplace_back(path);
    for (std::filesystem::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
      if (entry->is_regular_file(error)) inputs.push_back(entry->path());
    }
  }
  std::sort(inputs.begin(), inputs.end());
  return inputs;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::filesystem::path> inputs =
      InputsOf(std::vector<std::string>(argv + 1, argv + argc));
  for (const std::filesystem::path& input : inputs) {
    std::printf("%s\n", input.c_str());
    std::fflush(stdout);
    std::ifstream stream(input, std::ios::binary);
    if (!stream) {
      std::printf("cannot be read\n");
      return 1;
    }
    const std::string text{std::istreambuf_iterator<char>(stream),
                           std::istreambuf_iterator<char>()};
    // A copy of its exact size on the heap, so that the address sanitizer sees a read past its end.
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  }
  // An empty corpus is a wrong path, not a success.
  if (inputs.empty()) std::printf("no inputs\n");
  return inputs.empty() ? 1 : 0;
}

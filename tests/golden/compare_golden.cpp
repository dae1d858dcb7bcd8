// compare_golden EXPECTED ACTUAL: says whether a command printed what it should.
//
// Two .json files are compared as documents: the same keys in the same order, the same texts, and
// numbers within 1e-9 of each other, relative to the larger (compilers differ in the last bits of
// sines and roots). All others are compared byte for byte, except that the line with the date of
// a save is taken as equal to any other. Status 0 if equal, 1 with the places that differ.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

constexpr double Tolerance = 1e-9;
constexpr std::size_t MostFaults = 20;

std::optional<std::string> TextOfFile(const char* path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  return std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool NumbersAgree(const Json& expected, const Json& actual) {
  if (expected.is_number_integer() && actual.is_number_integer()) return expected == actual;
  const double a = expected.get<double>();
  const double b = actual.get<double>();
  return std::abs(a - b) <= Tolerance * std::max(std::abs(a), std::abs(b));
}

/// One value of both documents that is still to be compared.
struct Pair {
  std::string path;
  const Json* expected;
  const Json* actual;
};

std::vector<std::string> KeysOf(const Json& object) {
  std::vector<std::string> keys;
  for (const auto& item : object.items()) keys.push_back(item.key());
  return keys;
}

/// Compares two values; the members of lists and objects that fit each other join `open`.
/// \return what is wrong, or nothing
std::optional<std::string> FaultOf(const Pair& pair, std::vector<Pair>& open) {
  const Json& expected = *pair.expected;
  const Json& actual = *pair.actual;
  if (expected.is_number() && actual.is_number()) {
    if (NumbersAgree(expected, actual)) return std::nullopt;
  } else if (expected.is_object() && actual.is_object()) {
    const std::vector<std::string> keys = KeysOf(expected);
    if (keys != KeysOf(actual)) {
      return "keys " + Json(keys).dump() + " expected, not " + Json(KeysOf(actual)).dump();
    }
    for (const std::string& key : keys) {
      open.push_back({pair.path + "." + key, &expected.at(key), &actual.at(key)});
    }
    return std::nullopt;
  } else if (expected.is_array() && actual.is_array()) {
    if (expected.size() != actual.size()) {
      return std::to_string(expected.size()) + " members expected, not " +
             std::to_string(actual.size());
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
      open.push_back({pair.path + "[" + std::to_string(i) + "]", &expected[i], &actual[i]});
    }
    return std::nullopt;
  } else if (expected == actual) {
    return std::nullopt;
  }
  return expected.dump() + " expected, not " + actual.dump();
}

std::vector<std::string> JsonFaults(const std::string& expectedText,
                                    const std::string& actualText) {
  const Json expected = Json::parse(expectedText, nullptr, false);
  const Json actual = Json::parse(actualText, nullptr, false);
  if (expected.is_discarded()) return {"the expected file is not JSON"};
  if (actual.is_discarded()) return {"the output is not JSON"};
  std::vector<std::string> faults;
  std::vector<Pair> open{{"$", &expected, &actual}};
  while (!open.empty() && faults.size() < MostFaults) {
    const Pair pair = std::move(open.back());
    open.pop_back();
    if (const std::optional<std::string> fault = FaultOf(pair, open)) {
      faults.push_back(pair.path + ": " + *fault);
    }
  }
  return faults;
}

/// Cuts a text after each line feed, so that a missing one at the end is a difference too.
std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t feed = text.find('\n');
    const std::size_t length = feed == std::string_view::npos ? text.size() : feed + 1;
    lines.push_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return lines;
}

/// The date of the last save, `D<tab>1999-4-3`: another one on each day that the test runs.
bool IsSaveDate(std::string_view line) {
  constexpr std::string_view DateBytes = "0123456789-\n";
  return line.starts_with("D\t") && line.find_first_not_of(DateBytes, 2) == std::string_view::npos;
}

std::vector<std::string> TextFaults(std::string_view expectedText, std::string_view actualText) {
  const std::vector<std::string_view> expected = LinesOf(expectedText);
  const std::vector<std::string_view> actual = LinesOf(actualText);
  std::vector<std::string> faults;
  const std::size_t lines = std::max(expected.size(), actual.size());
  for (std::size_t i = 0; i < lines && faults.size() < MostFaults; ++i) {
    const std::string_view a = i < expected.size() ? expected[i] : std::string_view();
    const std::string_view b = i < actual.size() ? actual[i] : std::string_view();
    if (a == b || (IsSaveDate(a) && IsSaveDate(b))) continue;
    faults.push_back("line " + std::to_string(i + 1) + "\n  expected: " + std::string(a) +
                     "\n  actual:   " + std::string(b));
  }
  return faults;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: compare_golden EXPECTED ACTUAL\n");
    return 2;
  }
  const std::optional<std::string> expected = TextOfFile(argv[1]);
  const std::optional<std::string> actual = TextOfFile(argv[2]);
  if (!expected || !actual) {
    std::fprintf(stderr, "%s cannot be read\n", expected ? argv[2] : argv[1]);
    return 2;
  }
  const bool json = std::string_view(argv[1]).ends_with(".json");
  const std::vector<std::string> faults =
      json ? JsonFaults(*expected, *actual) : TextFaults(*expected, *actual);
  for (const std::string& fault : faults) std::printf("%s\n", fault.c_str());
  if (faults.size() == MostFaults) std::printf("(and perhaps more)\n");
  return faults.empty() ? 0 : 1;
}

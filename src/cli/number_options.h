#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <string>

namespace orvane {

/// Options that take a number. Numbers are decimal and fill the whole text. Any other text is wrong
/// usage: "--answer: many is not a whole number from 1 to 3".

/// What an option accepts.
struct WholeNumbers {
  int least = 0;
  int most = 0;
  std::string wanted;  ///< for the message: "a whole number from 1 to 3"
};
struct RealNumbers {
  double above = 0;                                       ///< excluded; minus infinity for no bound
  std::string wanted;                                     ///< for the message: "a number"
  double most = std::numeric_limits<double>::infinity();  ///< included
};
/// Whole numbers from 0.
struct Counts {
  bool hasLimit = false;  ///< a number beyond 64 bits is refused, and not read as the largest
  std::string wanted;     ///< for the message: "a whole number from 0 on"
};

/// Reads the text of an option. Throws `CLI::ValidationError` for a text that is not accepted.
int ReadNumber(const std::string& option, const std::string& text, const WholeNumbers& accepted);
double ReadNumber(const std::string& option, const std::string& text, const RealNumbers& accepted);
std::uint64_t ReadNumber(const std::string& option, const std::string& text,
                         const Counts& accepted);

/// Adds an option that sets `number`, which must outlive the parsing.
template <typename Number, typename Accepted>
CLI::Option* AddNumber(CLI::App& command, const std::string& option, Number& number,
                       const Accepted& accepted, const std::string& help) {
  return command.add_option_function<std::string>(
      option,
      [option, accepted, &number](const std::string& text) {
        number = ReadNumber(option, text, accepted);
      },
      help);
}

}  // namespace orvane

#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <string>

namespace orvane {

/// While one of these lives, numbers in streams have a decimal comma, and points between the
/// thousands, as in much of Europe. The functions of C follow where the system has such a locale
/// or can make one for the occasion.
class DecimalComma {
 public:
  DecimalComma() : oldC_(std::setlocale(LC_ALL, nullptr)) {
    reachesC_ = ReachC() || (MakeLocale() && ReachC());
    // A locale with a facet of its own has no name and leaves what was just set as it is.
    oldStreams_ = std::locale::global(std::locale(std::locale::classic(), new Punctuation));
  }
  ~DecimalComma() {
    std::locale::global(oldStreams_);
    std::setlocale(LC_ALL, oldC_.c_str());
    if (madeIn_.empty()) return;
    ::unsetenv("LOCPATH");
    std::filesystem::remove_all(madeIn_);
  }
  DecimalComma(const DecimalComma&) = delete;
  DecimalComma& operator=(const DecimalComma&) = delete;

  /// \return true if strtod and printf use the comma too
  bool ReachesC() const { return reachesC_; }

 private:
  struct Punctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  static bool ReachC() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE"}) {
      if (std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',') {
        return true;
      }
    }
    return false;
  }

  /// A bare system has the sources of the locales at most.
  bool MakeLocale() {
    std::string directory = std::filesystem::temp_directory_path() / "orvane-locale-XXXXXX";
    if (std::getenv("LOCPATH") != nullptr || ::mkdtemp(directory.data()) == nullptr) return false;
    madeIn_ = directory;
    const std::string command =
        "localedef -i de_DE -f UTF-8 '" + directory + "/de_DE.UTF-8' >/dev/null 2>&1";
    return std::system(command.c_str()) == 0 && ::setenv("LOCPATH", directory.c_str(), 1) == 0;
  }

  std::string oldC_;
  bool reachesC_ = false;
  std::string madeIn_;
  std::locale oldStreams_;
};

}  // namespace orvane

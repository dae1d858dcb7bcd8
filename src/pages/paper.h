#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A sheet of paper, upright.
struct Paper {
  std::string name;
  double width = 0;   ///< millimetres
  double height = 0;  ///< millimetres
};

/// The margin at each edge of a page in a PDF file, in millimetres.
constexpr double PdfMargin = 10;

/// All sheets that can be named, from the commonest on.
const std::vector<Paper>& Papers();

/// \param name  in any case of letters
/// \return the sheet of that name, or nothing
std::optional<Paper> FindPaper(std::string_view name);

}  // namespace orvane

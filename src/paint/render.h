#pragma once

#include "view/map_window.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// Kinds of picture file.
enum class PictureFormat {
  Png,  ///< pixels
  Svg,  ///< lines and text
  Pdf,  ///< lines and text, one page of the size of the view
};

/// \return the format that the extension of `path` names, in any case of letters, or nothing
std::optional<PictureFormat> PictureFormatOf(std::string_view path);

/// How a picture is made. Its size is the client size of the view.
struct RenderOptions {
  bool antialias = false;     ///< smooth lines in a PNG; SVG and PDF leave that to their viewer
  double pixelsPerInch = 96;  ///< size of the fonts, and of the PDF page
  std::string title{};        ///< title within the file; may be empty
};

/// Width and height of a view may not pass this many pixels, nor their product `LargestPicture`.
constexpr int LongestPictureSide = 32000;
constexpr long long LargestPicture = 400'000'000;

/// Draws a view into a picture, as its window would show it. Where the view looks
/// must be set (`SizeView` and its like). If the program has no QGuiApplication yet, one without
/// any screen is made for the time of the call, so a batch tool needs no care.
/// \param view   `target` is null afterwards; the fonts' metrics are those of the picture
/// \param error  receives a text for the user on failure
/// \return the bytes of the file, or nothing on failure
std::optional<std::string> RenderMap(MapWindow& view, PictureFormat format,
                                     const RenderOptions& options, std::string& error);

/// The same into a file, in the format that the extension of `path` names. The file is written
/// whole or not at all.
/// \return false on failure, with a text for the user in `error`
bool RenderMap(MapWindow& view, const RenderOptions& options, const std::string& path,
               std::string& error);

}  // namespace orvane

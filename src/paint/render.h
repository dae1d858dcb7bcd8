#pragma once

#include "paint/canvas_fonts.h"
#include "view/map_window.h"

#include <functional>
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

/// How a picture is made.
struct RenderOptions {
  bool antialias = false;     ///< smooth lines in a PNG; SVG and PDF leave that to their viewer
  double pixelsPerInch = 96;  ///< size of the fonts, and of the PDF page
  std::string title{};        ///< title within the file; may be empty
};

/// What a picture shows.
struct Drawing {
  int width = 0;   ///< pixels
  int height = 0;  ///< pixels
  /// Draws it all, its background first. The clip of the canvas is the whole picture.
  std::function<void(Canvas&)> draw{};
  FontSizes fonts{};
};

/// Width and height of a picture may not pass this many pixels, nor their product `LargestPicture`.
constexpr int LongestPictureSide = 32000;
constexpr long long LargestPicture = 400'000'000;

/// Makes a picture of anything that draws on a canvas. If the program has no QGuiApplication yet,
/// one without any screen is made for the time of the call, so a batch tool needs no care.
/// \param error  receives a text for the user on failure
/// \return the bytes of the file, or nothing on failure
std::optional<std::string> RenderDrawing(const Drawing& drawing, PictureFormat format,
                                         const RenderOptions& options, std::string& error);

/// The same into a file, in the format that the extension of `path` names. The file is written
/// whole or not at all.
/// \return false on failure, with a text for the user in `error`
bool RenderDrawing(const Drawing& drawing, const RenderOptions& options, const std::string& path,
                   std::string& error);

/// Draws a view into a picture, as its window would show it (`RenderDrawing`). Its size is the
/// client size of the view. Where the view looks must be set (`SizeView` and its like).
/// \param view   `target` is null afterwards; the fonts' metrics are those of the picture
std::optional<std::string> RenderMap(MapWindow& view, PictureFormat format,
                                     const RenderOptions& options, std::string& error);

/// The same into a file.
bool RenderMap(MapWindow& view, const RenderOptions& options, const std::string& path,
               std::string& error);

}  // namespace orvane

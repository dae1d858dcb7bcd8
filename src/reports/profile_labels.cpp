#include "reports/profile_labels.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// Nothing is drawn further from the plot, in pixels.
constexpr double FarthestPixel = 32000;

/// A height above the bottom line as a pixel row, cut to a whole one.
int RowOf(const ElevationView& view, double height) {
  const double row = view.plotHeight - height / view.metresPerPixelY;
  return static_cast<int>(std::clamp(row, -FarthestPixel, FarthestPixel));
}

int NameLine(const ElevationView& view) { return view.plotHeight + view.ascent; }

std::vector<ElevationText> EndTexts(const ElevationView& view, CoordinateDisplay display,
                                    const TextWidth& textWidth) {
  if (view.samples.empty()) return {};
  const std::string left = FormatLatLon(view.samples.front().position, display);
  const std::string right = FormatLatLon(view.samples.back().position, display);
  return {{{view.leftMargin, NameLine(view)}, left},
          {{view.leftMargin + view.plotWidth - 1 - textWidth(right), NameLine(view)}, right}};
}

}  // namespace

std::vector<ElevationText> PlaceNameTexts(const ElevationView& view, CoordinateDisplay display,
                                          const TextWidth& textWidth) {
  std::vector<ElevationText> texts;
  const int gap = textWidth(" ");
  const int last = static_cast<int>(view.samples.size()) - 1;
  int edge = 0;
  for (int i = 0; i <= last;) {
    const std::string* label = view.samples[static_cast<size_t>(i)].label;
    const int width = label == nullptr ? 0 : textWidth(*label);
    if (label == nullptr || (i != 0 && i - width / 2 < edge && i != last)) {
      ++i;
      continue;
    }
    const int x = i == last ? i - width : std::max(i - width / 2, 0);
    texts.push_back({{x + view.leftMargin, NameLine(view)}, *label});
    edge = x + width + gap - 1;
    i = std::max(edge, i) + 1;
  }
  const bool hasLabel =
      std::any_of(view.samples.begin(), view.samples.end(),
                  [](const ElevationSample& each) { return each.label != nullptr; });
  return hasLabel ? texts : EndTexts(view, display, textWidth);
}

std::vector<ElevationText> DistanceTexts(const ElevationView& view, const TextWidth& textWidth) {
  std::vector<ElevationText> texts;
  const int gap = textWidth(" ");
  int edge = 0;
  for (int i = 0; i < view.plotWidth;) {
    std::string text = FormatDistance(i * view.metresPerPixelX + view.viewStart);
    const int width = textWidth(text);
    if (edge != 0 && i <= edge + width / 2) {
      ++i;
      continue;
    }
    texts.push_back({{i + view.leftMargin, NameLine(view) + view.lineHeight}, std::move(text)});
    // Not from where the label is, so a long one may touch the next; see docs/compatibility.md.
    edge += width + gap - 1;
    i = std::max(edge, i) + 1;
  }
  return texts;
}

std::vector<ElevationText> AltitudeTexts(const ElevationView& view) {
  std::vector<ElevationText> texts;
  for (const double altitude : {view.minAltitude, view.maxAltitude}) {
    const int row = RowOf(view, std::trunc(altitude - view.plotBottom));
    texts.push_back({{1, row + view.ascent}, FormatFixed(altitude, 0)});
  }
  return texts;
}

Pixel ElevationVertexAt(const ElevationView& view, int column) {
  const ElevationSample& sample = view.samples[static_cast<size_t>(column)];
  return {column + view.leftMargin,
          RowOf(view, double{sample.position.altitude} - view.plotBottom)};
}

std::vector<Pixel> ElevationLine(const ElevationView& view) {
  std::vector<Pixel> line;
  for (size_t i = 0; i < view.samples.size(); ++i) {
    if (!HasAltitude(view.samples[i].position.altitude)) continue;
    line.push_back(ElevationVertexAt(view, static_cast<int>(i)));
  }
  return line;
}

std::vector<InfoRow> ElevationInfoRows(const ElevationView& view, CoordinateDisplay display) {
  if (view.samples.empty()) return {};
  const ElevationSample& sample = view.samples[static_cast<size_t>(PointerColumn(view))];
  std::vector<InfoRow> rows = PlaceRows(*view.map, sample.position, display);
  rows.push_back({false, sample.label == nullptr ? std::string() : *sample.label, ""});
  return rows;
}

std::vector<std::string_view> EmptyPlotTexts(const ElevationView& view) {
  if (!view.estimates) return {};
  if (!view.estimates->IsEmpty()) {
    if (view.maxAltitude != double{NoAltitude}) return {};
    return {"No point of this line has an altitude."};
  }
  if (!HasBasisAltitudes(*view.map)) return {"This map has no altitudes."};
  return {"This map has no altitudes of its own.",
          "Its basis has some, but a profile does not use them."};
}

}  // namespace orvane

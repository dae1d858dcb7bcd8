#pragma once

#include "reports/shown_report.h"

#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// A report that is a plain table: sentences on top, headings, and lines of cells.

struct TableColumn {
  std::string caption;
  bool isNumber = false;  ///< at the right of its column
};

struct TableReport {
  std::vector<std::string> notes;  ///< sentences, each from a line of its own
  std::vector<TableColumn> columns;
  std::vector<std::vector<std::string>> rows;  ///< a cell for each column
};

/// The notes, an empty line, the headings and the rows, with tabs between cells.
std::string TableReportText(const TableReport& table);

/// A table as it is drawn. Long notes are wrapped to the width of the view.
struct TableReportView : ReportView {
  TableReport table;
  std::vector<std::string> noteLines;  ///< the notes, wrapped
  std::vector<int> widths;             ///< of the columns, in pixels
};

/// Wraps the notes and works out the columns; the canvas has the fonts.
void LayOutTable(TableReportView& view, Canvas& canvas);

/// Draws notes, headings and rows on a canvas whose clip is what has to be drawn.
void DrawTable(const TableReportView& view, Canvas& canvas);

/// A table in its window. Its lines are the rows; the notes and the headings stay on top.
class ShownTable final : public ShownReport {
 public:
  /// Takes what to show; the caller then lays out.
  void Show(TableReport table) { view_.table = std::move(table); }
  const TableReport& Table() const { return view_.table; }

  TableReportView& View() override { return view_; }
  const TableReportView& View() const override { return view_; }
  void LayOut(Canvas& canvas) override;
  void Draw(Canvas& canvas) const override { DrawTable(view_, canvas); }
  int LineCount() const override { return static_cast<int>(view_.table.rows.size()); }
  PixelRect LinePlace(int line) const override;
  std::string LineText(int line) const override;
  std::string FileText() const override { return TableReportText(view_.table); }
  void Drop() override { view_.table = {}; }

 private:
  TableReportView view_;
};

}  // namespace orvane

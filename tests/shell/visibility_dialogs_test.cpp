// The dialogs of View Control, over the panes of a window.

#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/radio_box.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/range_visibility_dialog.h"
#include "shell/panes/trail_pane.h"
#include "shell/panes/trail_visibility_dialog.h"
#include "shell/shell_case.h"
#include "view/fills.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace orvane {
namespace {

constexpr char Follows[] =
    "M\tcalls\n"
    "T\tPath\tTrail\nG\tA\tS20 0\tE47 0\nG\tB\tS20 0.1\tE47 0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tCebus\t\t2020-3-1\nG\t8:00\tS20 0\tE47 0.05\nG\t8:30\tS20 0.2\tE47 0.1\n"
    "G\t9:00\tS20 0.1\tE47 0.3\n"
    "R\tPapio\nK\tPapio\nR\tCebus\nK\tCebus\n";

class VisibilityDialogs : public ShellCase {
 protected:
  VisibilityDialogs() : window_(OpenActive(folder_.Write("site.map", Follows))) {}

  MapWindow& Shown() { return window_.Shown(); }
  TrailPanelRow& Trail(const char* text) {
    for (TrailPanelRow* row : TrailRowsInOrder(Shown().trailViews)) {
      if (row->text == text) return *row;
    }
    ADD_FAILURE() << text;
    return Shown().trailViews.front();
  }
  RangePanelRow& Range(size_t number) {
    return *std::next(Shown().rangeViews.begin(), static_cast<int>(number));
  }

  /// Runs the command while `look` works with its dialog.
  template <typename Dialog>
  void InDialog(PaneView& focus, const std::function<void(Dialog&)>& look) {
    focus.setFocus();
    bool shown = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      shown = true;
      look(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    shell_.Commands().Run(CommandViewControl, window_);
    EXPECT_TRUE(shown);
  }
  void InTrails(const std::function<void(TrailVisibilityDialog&)>& look) {
    InDialog<TrailVisibilityDialog>(window_.Panes().Trails().Rows(), look);
  }
  void InRanges(const std::function<void(RangeVisibilityDialog&)>& look) {
    InDialog<RangeVisibilityDialog>(window_.Panes().Ranges().Rows(), look);
  }
  static QRadioButton& Radio(QDialog& dialog, const QString& name) {
    const auto buttons = dialog.findChildren<QRadioButton*>();
    for (QRadioButton* button : buttons) {
      if (button->accessibleName() == name) return *button;
    }
    ADD_FAILURE() << name.toStdString();
    return *buttons.first();
  }
  static QCheckBox& Check(QDialog& dialog, const QString& name) {
    const auto boxes = dialog.findChildren<QCheckBox*>();
    for (QCheckBox* box : boxes) {
      if (box->accessibleName() == name) return *box;
    }
    ADD_FAILURE() << name.toStdString();
    return *boxes.first();
  }

  MapWindowWidget& window_;
};

TEST_F(VisibilityDialogs, OkGivesTheValuesToTheSelectedTrails) {
  Trail("Papio").selected = true;
  Trail("2020-3-1 Ana").selected = true;
  InTrails([](TrailVisibilityDialog& dialog) {
    EXPECT_FALSE(Check(dialog, "Visible").isChecked());
    Check(dialog, "Visible").setChecked(true);
    dialog.findChild<QLineEdit*>()->setText("red");
    Radio(dialog, "Line Style: Dotted").setChecked(true);
    Radio(dialog, "Point Marks: Tick").setChecked(true);
    Radio(dialog, "Show Point Labels: All").setChecked(true);
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(Trail("Papio").visible);
  const TrailPanelRow& row = Trail("2020-3-1 Ana");
  EXPECT_EQ(row.color, 0xFF0000);
  EXPECT_EQ(row.lineStyle, LineStyle::Dotted);
  EXPECT_EQ(row.markStyle, MarkStyle::Tick);
  EXPECT_EQ(row.labelMode, LabelMode::All);
  EXPECT_EQ(row.trail->color, 0xFF0000);
  EXPECT_NE(Trail("Path").color, 0xFF0000);
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
}

TEST_F(VisibilityDialogs, FilledRulesThePatternsAndTheSolidLine) {
  Trail("Path").selected = true;
  InTrails([](TrailVisibilityDialog& dialog) {
    EXPECT_FALSE(Radio(dialog, "Fill Pattern: xx").isEnabled());
    EXPECT_FALSE(Radio(dialog, "Line Style: Solid").isEnabled());
    EXPECT_TRUE(Radio(dialog, "Fill Pattern: Solid").isEnabled());
    Check(dialog, "Filled").setChecked(true);
    EXPECT_TRUE(Radio(dialog, "Fill Pattern: xx").isEnabled());
    EXPECT_TRUE(Radio(dialog, "Line Style: Solid").isEnabled());
    EXPECT_TRUE(Radio(dialog, "Fill Pattern: Solid").isEnabled());
  });
  // Cancelled, but the pattern was set when the dialog opened.
  EXPECT_EQ(Trail("Path").fillPattern, FillSolid);
  EXPECT_FALSE(Trail("Path").filled);
}

TEST_F(VisibilityDialogs, AFillPatternWithoutAButtonIsKept) {
  constexpr int FromAFile = 7;
  Trail("Path").selected = true;
  Trail("Path").filled = true;
  Trail("Path").fillPattern = FromAFile;
  InTrails([](TrailVisibilityDialog& dialog) { dialog.accept(); });
  EXPECT_EQ(Trail("Path").fillPattern, FromAFile);
  EXPECT_EQ(Trail("Path").trail->fillPattern, FromAFile);
}

TEST_F(VisibilityDialogs, ABadColorKeepsTheDialog) {
  Trail("Path").selected = true;
  InTrails([this](TrailVisibilityDialog& dialog) {
    dialog.findChild<QLineEdit*>()->setText("mauvish");
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(messages_.Entries().back().text, "Bad Color");
  });
  EXPECT_NE(Trail("Path").color, NoColor);
}

TEST_F(VisibilityDialogs, RangesTakeShadingModeAndLevels) {
  Range(0).selected = true;
  InRanges([](RangeVisibilityDialog& dialog) {
    EXPECT_FALSE(Radio(dialog, "Shading Patterns: xx").isEnabled());
    EXPECT_TRUE(Radio(dialog, "Shading Patterns: None").isEnabled());
    EXPECT_FALSE(Radio(dialog, "Draw Range: Core Grid").isVisible());
    auto* levels = dialog.findChild<QListWidget*>();
    ASSERT_EQ(levels->count(), 16);
    EXPECT_EQ(levels->item(0)->text(), "100%");
    EXPECT_EQ(levels->item(15)->text(), "25%");
    EXPECT_TRUE(levels->item(0)->isSelected());
    levels->item(0)->setSelected(false);
    levels->item(10)->setSelected(true);
    Radio(dialog, "Shading Patterns: None").setChecked(true);
    Radio(dialog, "Draw Range: Hash").setChecked(true);
    dialog.findChild<QLineEdit*>()->setText("");
    dialog.accept();
  });
  EXPECT_EQ(Range(0).shading, NoShading);
  EXPECT_EQ(Range(0).drawMode, RangeDrawMode::Hash);
  EXPECT_EQ(Range(0).clusterMask, 1U << 10);
  EXPECT_EQ(Range(0).color, NoColor);
}

TEST_F(VisibilityDialogs, RangesTakeTicksOfEstimatesAndOverlapsHaveNone) {
  const auto tick = [](QDialog& dialog, const QString& caption) {
    const auto checks = dialog.findChildren<QCheckBox*>();
    for (QCheckBox* check : checks) {
      if (check->text() == caption) return check;
    }
    ADD_FAILURE() << caption.toStdString();
    return checks.first();
  };
  Range(0).selected = true;
  InRanges([&](RangeVisibilityDialog& dialog) {
    for (const char* caption : {"MCP, 95 % of the fixes", "MCP, 50 % of the fixes",
                                "Kernel, 95 % of the density", "Kernel, 50 % of the density"}) {
      EXPECT_TRUE(tick(dialog, caption)->isVisible());
      EXPECT_FALSE(tick(dialog, caption)->isChecked());
    }
    QTest::keyClick(tick(dialog, "MCP, 50 % of the fixes"), Qt::Key_Space);
    QTest::keyClick(tick(dialog, "Kernel, 95 % of the density"), Qt::Key_Space);
    dialog.accept();
  });
  EXPECT_EQ(Range(0).estimateMask, 6U);
  ASSERT_NE(Range(0).estimates, nullptr);
  EXPECT_FALSE(Range(0).estimates->rings.empty());
  InRanges([&](RangeVisibilityDialog& dialog) {
    EXPECT_TRUE(tick(dialog, "MCP, 50 % of the fixes")->isChecked());
    EXPECT_FALSE(tick(dialog, "MCP, 95 % of the fixes")->isChecked());
  });
  Range(0).selected = false;
  Range(2).selected = true;
  InRanges([&](RangeVisibilityDialog& dialog) {
    EXPECT_FALSE(tick(dialog, "MCP, 95 % of the fixes")->isVisible());
  });
}

TEST_F(VisibilityDialogs, OverlapsHaveTheirOwnPatternsAndNoLevels) {
  ASSERT_NE(Range(2).intersection, nullptr);
  Range(2).selected = true;
  InRanges([](RangeVisibilityDialog& dialog) {
    EXPECT_TRUE(Radio(dialog, "Shading Patterns: xx").isEnabled());
    EXPECT_FALSE(Radio(dialog, "Shading Patterns: //").isEnabled());
    EXPECT_FALSE(dialog.findChild<QListWidget*>()->isEnabled());
  });
}

TEST_F(VisibilityDialogs, WithoutASelectedRangeThereIsAMessageAndOnTheMapABeep) {
  window_.Panes().Ranges().Rows().setFocus();
  shell_.Commands().Run(CommandViewControl, window_);
  EXPECT_EQ(messages_.Entries().back().text, "Select a range first");
  window_.View().setFocus();
  shell_.Commands().Run(CommandViewControl, window_);
  EXPECT_EQ(beeps_, 1);
}

}  // namespace
}  // namespace orvane

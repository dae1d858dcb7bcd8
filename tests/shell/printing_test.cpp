// Printing from the windows: the Print dialog, the printer, the preview.

#include "base/files.h"
#include "model/map.h"
#include "paint/pdf_drawing.h"
#include "paint/print_job.h"
#include "shell/files/local_files.h"
#include "shell/print/print_map_dialog.h"
#include "shell/print/printer_dialogs.h"
#include "shell/progress/progress_box.h"
#include "shell/shell_case.h"
#include "view/view_transform.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <sstream>

namespace orvane {
namespace {

class PrintingTest : public ShellCase {
 protected:
  PrintingTest() : window_(OpenActive(WriteMap("site.map"))) {
    around_.printers.choose = [this](QPrinter& printer) { return ChoosePdf(printer); };
  }

  ~PrintingTest() override { around_.clock = nullptr; }

  bool ChoosePdf(QPrinter& printer) const {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(LocalFileName(PdfName()));
    return true;
  }
  std::string PdfName() const { return folder_.Path() + "/site.pdf"; }
  std::string Pdf() const { return ReadWholeFile(PdfName()).value_or(""); }
  /// What its pages show: lines and texts, without pens and the numbers of fonts.
  static std::vector<std::string> Pages(const std::string& pdf) {
    std::vector<std::string> pages;
    for (const std::string& page : PdfPages(pdf)) {
      std::istringstream operators(page);
      std::string& shown = pages.emplace_back();
      for (std::string line; std::getline(operators, line);) {
        if (line.ends_with(" m") || line.ends_with(" l") || line.ends_with(" Tj")) shown += line;
      }
    }
    return pages;
  }

  /// Runs a command while `look` works with the Print dialog, which is then cancelled if it is
  /// still there.
  void InDialog(CommandId id, const std::function<void(PrintMapDialog&)>& look) {
    RunInDialog([&] { shell_.Commands().Run(id, window_); }, look);
  }
  static void RunInDialog(const std::function<void()>& run,
                          const std::function<void(PrintMapDialog&)>& look) {
    bool shown = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<PrintMapDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      dialog->activateWindow();
      ASSERT_TRUE(QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }));
      shown = true;
      look(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    run();
    EXPECT_TRUE(shown);
  }
  static QLineEdit& Field(PrintMapDialog& dialog, const char* name) {
    return *Named<QLineEdit>(dialog, name);
  }
  template <typename Widget>
  static Widget* Named(PrintMapDialog& dialog, const char* name) {
    const auto all = dialog.findChildren<Widget*>();
    for (Widget* widget : all) {
      if (widget->accessibleName() == QString::fromLatin1(name)) return widget;
    }
    ADD_FAILURE() << name;
    return all.first();
  }
  static void Type(QLineEdit& field, const char* text) {
    field.setFocus();
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keyClicks(&field, QString::fromLatin1(text));
  }
  /// From now on a progress box comes up at once, and is cancelled.
  void CancelWhatTakesTime() {
    around_.clock = [this] {
      const auto all = QApplication::topLevelWidgets();
      for (QWidget* widget : all) {
        auto* box = qobject_cast<ProgressBox*>(widget);
        if (box != nullptr && box->isVisible()) box->reject();
      }
      return now_ += std::chrono::milliseconds(600);
    };
  }
  static void PressOk(PrintMapDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }

  MapWindowWidget& window_;
  std::chrono::milliseconds now_{0};
};

constexpr const char* WindowMode = "Print current window to fill page";
constexpr const char* LastSelection = "Print last selection to fill page";
constexpr const char* AreaMode = "Print this area";
constexpr const char* PointMode = "Print around this point";

TEST_F(PrintingTest, PrintsTheWindowOnOnePage) {
  around_.printers.choose = [this](QPrinter& printer) {
    EXPECT_EQ(printer.creator(), QStringLiteral("Orvane"));
    return ChoosePdf(printer);
  };
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    EXPECT_TRUE(Named<QRadioButton>(dialog, WindowMode)->isChecked());
    EXPECT_EQ(Field(dialog, "Point Size").text(), QStringLiteral("5"));
    EXPECT_EQ(Named<QComboBox>(dialog, "Grid Color")->currentText(), QStringLiteral("#a0a0a0"));
    PressOk(dialog);
  });
  EXPECT_EQ(around_.printers.offered, std::vector<int>{1});
  EXPECT_EQ(PdfPages(Pdf()).size(), 1U);
  const std::string title("s\0i\0t\0e", 7);  // of UTF-16
  EXPECT_NE(Pdf().find(title), std::string::npos);
  EXPECT_EQ(Texts(), std::vector<std::string>());
}

TEST_F(PrintingTest, PrintsNothingWithoutAnOkInBothDialogs) {
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(around_.printers.offered.empty());
  around_.printers.choose = nullptr;
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(around_.printers.offered.size(), 1U);
  EXPECT_EQ(Pdf(), "");
}

TEST_F(PrintingTest, CutsAnAreaIntoPages) {
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Area: scale"), "1:5000");
    EXPECT_TRUE(Named<QRadioButton>(dialog, AreaMode)->isChecked());
    EXPECT_EQ(dialog.Values().editedFields, PrintAreaEdited);
    Type(Field(dialog, "Area: from latitude"), "N1");
    Type(Field(dialog, "Area: to latitude"), "N1 1");
    Type(Field(dialog, "Area: from longitude"), "E10");
    Type(Field(dialog, "Area: to longitude"), "E10 1");
    PressOk(dialog);
  });
  // 1.85 km at 1:5000 are 370 mm each way: two sheets of A4 across, two down.
  EXPECT_EQ(around_.printers.offered, std::vector<int>{4});
  EXPECT_EQ(PdfPages(Pdf()).size(), 4U);
}

TEST_F(PrintingTest, FieldsChooseTheirMode) {
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    Field(dialog, "Point: rotate, degrees").setFocus();
    EXPECT_TRUE(Named<QRadioButton>(dialog, PointMode)->isChecked());
    Field(dialog, "Label").setFocus();
    EXPECT_TRUE(Named<QRadioButton>(dialog, PointMode)->isChecked());
    Field(dialog, "Area: to latitude").setFocus();
    EXPECT_TRUE(Named<QRadioButton>(dialog, AreaMode)->isChecked());
    EXPECT_EQ(dialog.Values().editedFields, 0U);
    Type(Field(dialog, "Point: show at least, vertical"), "2km");
    EXPECT_EQ(dialog.Values().editedFields, PrintPointEdited);
    Named<QRadioButton>(dialog, WindowMode)->click();
    EXPECT_EQ(dialog.Values().mode, PrintMode::FillPage);
  });
}

/// On a fine screen the first letter of an angle was out of its field.
TEST_F(PrintingTest, FieldsShowTheLongestAngle) {
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    for (const char* name :
         {"Area: from latitude", "Area: to longitude", "Point: latitude", "Point: longitude"}) {
      QLineEdit& field = Field(dialog, name);
      field.setText(QStringLiteral("W188\u00B0 88.88888'"));
      dialog.resize(dialog.minimumSizeHint());
      QApplication::processEvents();
      // The cursor is after the text. A text that is too long is moved to the left.
      EXPECT_EQ(field.cursorPositionAt({4, field.height() / 2}), 0) << name;
    }
  });
}

TEST_F(PrintingTest, KeepsTheDialogForAWrongField) {
  struct Wrong {
    const char* field;
    const char* text;
    const char* message;
  };
  for (const Wrong& wrong :
       {Wrong{"Area: to latitude", "N1x", "Bad North Latitude"},
        Wrong{"Area: from latitude", "N89", "Bad South Latitude"},
        Wrong{"Area: to longitude", "?", "Bad East Longitude"},
        Wrong{"Area: from longitude", "E179", "Bad West Longitude"},
        Wrong{"Area: scale", "5000", "Bad scale (must be 1:<some number>)"},
        Wrong{"Point: longitude", "?", "Bad Longitude"},
        Wrong{"Point: latitude", "E5", "Bad Latitude"},
        Wrong{"Point: show at least, vertical", "1x", "Bad Vertical distance"},
        Wrong{"Point: show at least, horizontal", "far", "Bad Horizontal distance"},
        Wrong{"Point: scale", "1:", "Bad scale (must be 1:<some number>)"},
        Wrong{"Point: rotate, degrees", "361", "Bad rotation angle"},
        Wrong{"Point Size", "73", "Bad point size"}, Wrong{"Point Size", "0", "Bad point size"}}) {
    InDialog(CommandPrint, [&](PrintMapDialog& dialog) {
      QLineEdit& field = Field(dialog, wrong.field);
      Type(field, wrong.text);
      Field(dialog, "Label").setFocus();
      const size_t before = Texts().size();
      PressOk(dialog);
      ASSERT_EQ(Texts().size(), before + 1) << wrong.field;
      EXPECT_EQ(Texts().back(), wrong.message);
      EXPECT_TRUE(dialog.isVisible());
      EXPECT_TRUE(field.hasFocus()) << wrong.field;
      EXPECT_EQ(field.selectedText(), QString::fromLatin1(wrong.text));
    });
  }
  EXPECT_TRUE(around_.printers.offered.empty());
}

TEST_F(PrintingTest, RemembersPointSizeAndColorAndTheSelection) {
  window_.Shown().flags |= MapWindowSelection;
  window_.Shown().selection[0] = {.lat = 1, .lon = 10};
  window_.Shown().selection[1] = {.lat = 1.01, .lon = 10.01};
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    auto* last = Named<QCheckBox>(dialog, "Print Last Selection");
    EXPECT_TRUE(last->isEnabled());
    EXPECT_FALSE(last->isChecked());
    const QString shown = Field(dialog, "Area: to latitude").text();
    Field(dialog, "Label").setText(QStringLiteral("kept"));
    last->click();
    EXPECT_TRUE(Named<QRadioButton>(dialog, LastSelection)->isChecked());
    EXPECT_NE(Field(dialog, "Area: to latitude").text(), shown);
    EXPECT_EQ(dialog.Values().editedFields, 0U);
    Type(Field(dialog, "Point Size"), "9");
    Named<QComboBox>(dialog, "Grid Color")->setCurrentText(QStringLiteral("#c0c0c0"));
    PressOk(dialog);
  });
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    EXPECT_TRUE(Named<QCheckBox>(dialog, "Print Last Selection")->isChecked());
    EXPECT_EQ(Field(dialog, "Point Size").text(), QStringLiteral("9"));
    EXPECT_EQ(Named<QComboBox>(dialog, "Grid Color")->currentText(), QStringLiteral("#c0c0c0"));
  });
  window_.Shown().flags &= ~std::uint32_t{MapWindowSelection};
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    EXPECT_FALSE(Named<QCheckBox>(dialog, "Print Last Selection")->isEnabled());
    EXPECT_FALSE(Named<QCheckBox>(dialog, "Print Last Selection")->isChecked());
    Named<QComboBox>(dialog, "Grid Color")->setCurrentText(QStringLiteral("red"));
    PressOk(dialog);
    EXPECT_TRUE(dialog.isVisible());
  });
  EXPECT_EQ(Texts(), std::vector<std::string>{"Bad color"});
}

TEST_F(PrintingTest, TheKeyEShowsTheDialogAndPrintsNothing) {
  RunInDialog([this] { QTest::keyClick(&window_.View(), Qt::Key_E); },
              [](PrintMapDialog& dialog) {
                Type(Field(dialog, "Point Size"), "8");
                PressOk(dialog);
              });
  EXPECT_TRUE(around_.printers.offered.empty());
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    EXPECT_EQ(Field(dialog, "Point Size").text(), QStringLiteral("8"));
  });
}

TEST_F(PrintingTest, ChecksThePrinterTwice) {
  around_.printers.invalid = 2;
  shell_.Commands().Run(CommandPrint, window_);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Not set up for current printer"});
  around_.printers.invalid = 1;
  around_.printers.checks = 0;
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(around_.printers.checks, 2);
  EXPECT_NE(Pdf(), "");
}

TEST_F(PrintingTest, PageSetupHoldsForLaterJobs) {
  around_.printers.setUp = [](QPrinter& printer) {
    printer.setPageLayout(PdfLayout(FindPaper("A3").value_or(Paper{}), QPageLayout::Landscape));
  };
  shell_.Commands().Run(CommandPageSetup, window_);
  EXPECT_EQ(around_.printers.setUps, 1);
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_NE(Pdf().find("/MediaBox [0 0 1191"), std::string::npos) << "420 mm";
}

/// The page that the printer's own box sets is the one that counts.
TEST_F(PrintingTest, ReadsTheFieldsAgainForThePageOfThePrinter) {
  around_.printers.choose = [this](QPrinter& printer) {
    printer.setPageLayout(PdfLayout(FindPaper("A3").value_or(Paper{}), QPageLayout::Landscape));
    return ChoosePdf(printer);
  };
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:10000");
    Type(Field(dialog, "Point: show at least, vertical"), "2.7km");
    Type(Field(dialog, "Point: show at least, horizontal"), "3.9km");
    PressOk(dialog);
  });
  // 270 by 390 mm: six pages of A4, one of A3.
  ASSERT_EQ(around_.printers.offered.size(), 1U);
  EXPECT_GT(around_.printers.offered.front(), 1);
  EXPECT_EQ(PdfPages(Pdf()).size(), 1U);
}

TEST_F(PrintingTest, PrintsThePagesThatAreChosen) {
  around_.printers.choose = [this](QPrinter& printer) {
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 3);
    return ChoosePdf(printer);
  };
  const auto fourPages = [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:10000");
    Type(Field(dialog, "Point: show at least, vertical"), "5km");
    Type(Field(dialog, "Point: show at least, horizontal"), "3km");
    PressOk(dialog);
  };
  InDialog(CommandPrint, fourPages);
  const std::vector<std::string> chosen = Pages(Pdf());
  around_.printers.choose = [this](QPrinter& printer) {
    printer.setPrintRange(QPrinter::AllPages);
    return ChoosePdf(printer);
  };
  InDialog(CommandPrint, fourPages);
  const std::vector<std::string> all = Pages(Pdf());
  ASSERT_EQ(all.size(), 4U);
  ASSERT_EQ(chosen.size(), 2U);
  EXPECT_EQ(chosen[0], all[1]);
  EXPECT_EQ(chosen[1], all[2]);
}

TEST_F(PrintingTest, AsksBeforeALongJob) {
  const auto manyPages = [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:1000");
    Type(Field(dialog, "Point: show at least, vertical"), "3km");
    Type(Field(dialog, "Point: show at least, horizontal"), "3km");
    PressOk(dialog);
  };
  int pages = 0;
  for (const int answer : {2, 1}) {
    messages_.answers = {answer};
    InDialog(CommandPrint, manyPages);
    pages = around_.printers.offered.back();
    EXPECT_EQ(Pdf().empty(), answer == 2);
  }
  EXPECT_GT(pages, 100);
  EXPECT_EQ(PdfPages(Pdf()).size(), static_cast<size_t>(pages));
  EXPECT_EQ(messages_.Questions().back().text,
            "This makes " + std::to_string(pages) + " pages. Print them all?");
}

TEST_F(PrintingTest, CancelLeavesAnOldFileAsItWas) {
  folder_.Write("site.pdf", "old");
  CancelWhatTakesTime();
  InDialog(CommandPrint, [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:10000");
    Type(Field(dialog, "Point: show at least, vertical"), "9km");
    PressOk(dialog);
  });
  EXPECT_EQ(Pdf(), "old");
  EXPECT_EQ(Texts(), std::vector<std::string>());
}

/// Only between pages was a job asked whether it goes on, so a single page could not be cancelled.
TEST_F(PrintingTest, AJobOfOnePageCanBeCanceled) {
  folder_.Write("site.pdf", "old");
  for (int i = 0; i < 500; ++i) {
    Point& point = MakePoint(window_.TheMap(), "P" + std::to_string(i));
    point.geo = {1 + 1e-5 * i, 10 + 1e-5 * i};
    point.flags |= PointPlaced;
    window_.TheMap().loosePoints.push_front(&point);
  }
  CancelWhatTakesTime();
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(around_.printers.offered, std::vector<int>{1});
  EXPECT_EQ(Pdf(), "old");
}

TEST_F(PrintingTest, SaysThatAFileCannotBeWritten) {
  around_.printers.choose = [this](QPrinter& printer) {
    ChoosePdf(printer);
    printer.setOutputFileName(LocalFileName(folder_.Path() + "/none/site.pdf"));
    return true;
  };
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(Texts(),
            std::vector<std::string>{"Can't open file " + folder_.Path() + "/none/site.pdf"});
}

TEST_F(PrintingTest, ThePreviewShowsThePrintedPages) {
  const auto look = [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:10000");
    Type(Field(dialog, "Point: show at least, vertical"), "5km");
    PressOk(dialog);
  };
  InDialog(CommandPrint, look);
  const std::vector<std::string> printed = Pages(Pdf());
  const std::string previewName = folder_.Path() + "/preview.pdf";
  around_.printers.preview = [&](QPrinter& printer, const std::function<bool(QPrinter&)>& draw) {
    printer.setOutputFileName(LocalFileName(previewName));
    EXPECT_TRUE(draw(printer));
    return false;
  };
  InDialog(CommandPrintPreview, look);
  EXPECT_EQ(around_.printers.previews, 1);
  EXPECT_EQ(around_.printers.offered.size(), 1U);
  EXPECT_GT(printed.size(), 1U);
  EXPECT_EQ(Pages(ReadWholeFile(previewName).value_or("")), printed);
}

/// The pages so far were shown as if they were all.
TEST_F(PrintingTest, CancelEndsThePreview) {
  int drawn = 0;
  around_.printers.preview = [&](QPrinter& printer, const std::function<bool(QPrinter&)>& draw) {
    ChoosePdf(printer);
    EXPECT_FALSE(draw(printer));
    ++drawn;
    return false;
  };
  CancelWhatTakesTime();
  InDialog(CommandPrintPreview, [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:10000");
    Type(Field(dialog, "Point: show at least, vertical"), "9km");
    PressOk(dialog);
  });
  EXPECT_EQ(drawn, 1);
  EXPECT_EQ(Texts(), std::vector<std::string>());
}

/// A preview whose page became smaller drew any number of pages without a question.
TEST_F(PrintingTest, APreviewThatGrowsAsksAgain) {
  const QPageLayout upright = PdfLayout(FindPaper("A4").value_or(Paper{}), QPageLayout::Portrait);
  const QPageLayout small = PdfLayout(FindPaper("A6").value_or(Paper{}), QPageLayout::Portrait);
  const QPageLayout tiny = PdfLayout({"tiny", 32, 32}, QPageLayout::Portrait);
  around_.printers.setUp = [&](QPrinter& printer) { printer.setPageLayout(upright); };
  shell_.Commands().Run(CommandPageSetup, window_);
  const auto fewPages = [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:1000");
    Type(Field(dialog, "Point: show at least, vertical"), "1.4km");
    Type(Field(dialog, "Point: show at least, horizontal"), "1.4km");
    PressOk(dialog);
  };
  const auto drawOn = [this](QPrinter& printer, const QPageLayout& layout, const auto& draw) {
    ChoosePdf(printer);
    printer.setPageLayout(layout);
    return draw(printer);
  };
  around_.printers.preview = [&](QPrinter& printer, const std::function<bool(QPrinter&)>& draw) {
    EXPECT_TRUE(drawOn(printer, upright, draw));
    EXPECT_TRUE(messages_.Questions().empty());
    messages_.answers = {1};
    EXPECT_TRUE(drawOn(printer, small, draw));
    EXPECT_EQ(messages_.Questions().size(), 1U);
    EXPECT_TRUE(drawOn(printer, upright, draw));
    EXPECT_TRUE(drawOn(printer, small, draw));
    EXPECT_EQ(messages_.Questions().size(), 1U) << "was agreed to";
    EXPECT_FALSE(drawOn(printer, tiny, draw));
    return false;
  };
  InDialog(CommandPrintPreview, fewPages);
  ASSERT_EQ(Texts().size(), 1U);
  EXPECT_TRUE(Texts().front().starts_with("Too many pages (")) << Texts().front();

  // What was refused is not the page of the next job.
  shell_.Commands().Run(CommandPageSetup, window_);
  around_.printers.preview = [&](QPrinter& printer, const std::function<bool(QPrinter&)>& draw) {
    EXPECT_TRUE(drawOn(printer, upright, draw));
    messages_.answers = {2};
    EXPECT_FALSE(drawOn(printer, small, draw));
    return false;
  };
  InDialog(CommandPrintPreview, fewPages);
  EXPECT_EQ(messages_.Questions().size(), 2U);
  InDialog(CommandPrint, fewPages);
  EXPECT_LT(around_.printers.offered.back(), 100);
}

/// Counts the windows that become visible.
class ShownWindows final : public QObject {
 public:
  ShownWindows() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Expose && watched->isWindowType()) ++count;
    return false;
  }
  int count = 0;
};

class DesktopPreviewTest : public PrintingTest {
 protected:
  DesktopPreviewTest() { ChoosePdf(printer_); }

  /// A black page.
  static void DrawPage(QPrinter& printer) {
    QPainter painter(&printer);
    painter.fillRect(0, 0, 100, 100, Qt::black);
  }
  static QAction* ActionNamed(const QWidget& dialog, const char* text) {
    const auto actions = dialog.findChildren<QAction*>();
    for (QAction* action : actions) {
      if (action->text() == QLatin1String(text)) return action;
    }
    ADD_FAILURE() << text;
    return nullptr;
  }

  QPrinter printer_;
  DesktopPrinterDialogs dialogs_;
};

TEST_F(DesktopPreviewTest, DoesNotComeUpIfItsPagesAreNotDrawn) {
  const ShownWindows shown;
  int draws = 0;
  const auto draw = [&draws](QPrinter& printer) {
    DrawPage(printer);
    ++draws;
    return false;
  };
  EXPECT_FALSE(dialogs_.Preview(printer_, draw, &window_));
  EXPECT_EQ(draws, 1);
  EXPECT_EQ(shown.count, 0);
}

TEST_F(DesktopPreviewTest, ClosesIfAnotherPageIsNotDrawn) {
  int draws = 0;
  const auto draw = [&draws](QPrinter& printer) {
    DrawPage(printer);
    return ++draws == 1;
  };
  QTimer::singleShot(0, [] {
    QWidget* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    ActionNamed(*dialog, "Landscape")->trigger();
  });
  EXPECT_FALSE(dialogs_.Preview(printer_, draw, &window_));
  EXPECT_EQ(draws, 2);
}

TEST_F(DesktopPreviewTest, LeadsToThePrinter) {
  const auto draw = [](QPrinter& printer) {
    DrawPage(printer);
    return true;
  };
  QTimer::singleShot(0,
                     [] { ActionNamed(*QApplication::activeModalWidget(), "Print")->trigger(); });
  EXPECT_TRUE(dialogs_.Preview(printer_, draw, &window_));
}

TEST_F(PrintingTest, ThePreviewLeadsToThePrinter) {
  around_.printers.preview = [](QPrinter&, const auto&) { return true; };
  InDialog(CommandPrintPreview, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(around_.printers.offered, std::vector<int>{1});
  EXPECT_EQ(PdfPages(Pdf()).size(), 1U);
}

TEST_F(PrintingTest, ThePreviewAsksOnceBeforeALongJob) {
  around_.printers.preview = [](QPrinter&, const auto&) { return true; };
  InDialog(CommandPrintPreview, [](PrintMapDialog& dialog) {
    Type(Field(dialog, "Point: scale"), "1:1000");
    Type(Field(dialog, "Point: show at least, vertical"), "3km");
    Type(Field(dialog, "Point: show at least, horizontal"), "3km");
    PressOk(dialog);
  });
  EXPECT_EQ(messages_.Questions().size(), 1U);
  EXPECT_GT(PdfPages(Pdf()).size(), 100U);
}

/// The pages chosen for one job were those of the next too.
TEST_F(PrintingTest, PrintsAllPagesAfterAJobOfSome) {
  around_.printers.choose = [this](QPrinter& printer) {
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 2);
    return ChoosePdf(printer);
  };
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(Texts(), std::vector<std::string>{"The last page is 1"});
  around_.printers.choose = [this](QPrinter& printer) { return ChoosePdf(printer); };
  InDialog(CommandPrint, [](PrintMapDialog& dialog) { PressOk(dialog); });
  EXPECT_EQ(PdfPages(Pdf()).size(), 1U);
}

TEST_F(PrintingTest, RefusesAPageWithoutRoom) {
  around_.printers.setUp = [](QPrinter& printer) {
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                      QMarginsF(110, 10, 110, 10), QPageLayout::Millimeter));
  };
  shell_.Commands().Run(CommandPageSetup, window_);
  shell_.Commands().Run(CommandPrint, window_);
  EXPECT_EQ(Texts(), std::vector<std::string>{"The margins leave no room on the page"});
  QTest::keyClick(&window_.View(), Qt::Key_E);
  EXPECT_EQ(Texts().size(), 2U);
}

TEST_F(PrintingTest, OtherWindowsBeep) {
  window_.TryClose();
  DeliverDeletes();
  TaskWindow* window = ShownTaskWindow();
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(window->Commands().ActionOf(CommandPrint).isEnabled());
  EXPECT_FALSE(window->Commands().ActionOf(CommandPrintPreview).isEnabled());
  shell_.Commands().Run(CommandPrint, *window);
  EXPECT_EQ(beeps_, 1);
  EXPECT_EQ(around_.printers.checks, 0);
}

}  // namespace
}  // namespace orvane

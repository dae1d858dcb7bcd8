// The command Export and its dialog, from the keys to the files.

#include "formats/format_module.h"
#include "shell/dialog_driver.h"
#include "shell/output/export_dialog.h"
#include "shell/progress/progress_box.h"
#include "shell/shell_case.h"
#include "support/gis_reader.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr auto Site =
    "Z\t\t1,10\nT\tRidge\tTrail\nG\tCamp\tN1\tE10\t100\n"
    "G\tHill\tN1 0.6'\tE10\t150\nG\tLake\tN1\tE10 0.6'\t130\n";

const std::vector<std::string> Nothing;

class ExportWindowTest : public ShellCase {
 protected:
  void SetUp() override {
    if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
    ASSERT_NE(LoadFormatModule().module, nullptr) << LoadFormatModule().fault;
    window_ = &OpenActive(folder_.Write("site.map", Site));
  }

  /// Runs the command by its key, while `look` works with the dialog. A dialog that `look` leaves
  /// open is cancelled.
  /// \param name  of the file that is chosen; empty if none is
  void Export(const std::string& name, const std::function<void(ExportDialog&)>& look) {
    if (!name.empty()) dialogs_->paths = {folder_.Path(name)};
    EXPECT_TRUE(WithDialog<ExportDialog>([this] { Press(*window_, CommandExport); }, look));
  }
  static void PressReturn(ExportDialog& dialog) {
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  }
  /// A button stays down for a moment, and then is clicked.
  static void PressAlt(ExportDialog& dialog, Qt::Key key) {
    QTest::keyClick(dialog.windowHandle(), key, Qt::AltModifier);
    const auto buttons = dialog.findChildren<QAbstractButton*>();
    EXPECT_TRUE(QTest::qWaitFor([&buttons] {
      return std::none_of(buttons.begin(), buttons.end(),
                          [](const QAbstractButton* button) { return button->isDown(); });
    }));
  }
  template <typename Control>
  static Control& In(ExportDialog& dialog, const char* name) {
    return *dialog.findChild<Control*>(QLatin1String(name));
  }
  std::string Listed(const std::string& name) const {
    return ListedByOgrinfo(folder_, name, "-so -al");
  }

  MapWindowWidget* window_ = nullptr;
};

TEST_F(ExportWindowTest, ReturnWritesEveryLayerAsAGeoPackage) {
  Export("site.gpkg", [](ExportDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Export"));
    EXPECT_EQ(dialog.focusWidget()->accessibleName(), QStringLiteral("Format"));
    EXPECT_EQ(In<QRadioButton>(dialog, "utm").accessibleName().toStdString(),
              "UTM zone of the middle of the map: 32 north (EPSG:32632)");
    PressReturn(dialog);
    EXPECT_FALSE(dialog.isVisible());
  });
  ASSERT_EQ(dialogs_->questions.size(), 1U);
  EXPECT_TRUE(dialogs_->questions[0].save);
  EXPECT_EQ(dialogs_->questions[0].file.directory + "/site.map", folder_.Path("site.map"));
  EXPECT_EQ(dialogs_->questions[0].file.name, "site.gpkg");
  ASSERT_EQ(Texts().size(), 1U);
  EXPECT_TRUE(Texts()[0].starts_with("Exported points, trails and contours to " +
                                     folder_.Path("site.gpkg") + ": "));
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::Note);
  const std::string listed = Listed("site.gpkg");
  ExpectNoComplaint(listed);
  ExpectIn(listed, "Layer name: trails\nGeometry: 3D Line String\nFeature Count: 1\n");
  // Nobody has opened the contours before.
  ExpectIn(listed, "Layer name: contours\nGeometry: 3D Line String\nFeature Count: 11\n");
  EXPECT_EQ(window_->TheMap().flags & MapDirty, 0U);
}

TEST_F(ExportWindowTest, LayersAndSystemAreChosenWithTheKeyboard) {
  Export("camp.gpkg", [](ExportDialog& dialog) {
    PressAlt(dialog, Qt::Key_U);  // Untick All
    EXPECT_FALSE(In<QCheckBox>(dialog, "trails").isChecked());
    PressAlt(dialog, Qt::Key_P);
    PressAlt(dialog, Qt::Key_M);  // UTM
    PressAlt(dialog, Qt::Key_X);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(Texts(), std::vector<std::string>{"Exported points to " + folder_.Path("camp.gpkg") +
                                              ": 3 features in EPSG:32632"});
  const std::string listed = Listed("camp.gpkg");
  ExpectIn(listed, "Layer name: points");
  EXPECT_EQ(listed.find("Layer name: trails"), listed.npos);
  ExpectIn(listed, "ID[\"EPSG\",32632]");
}

TEST_F(ExportWindowTest, EstimatesAreWrittenOnlyIfTicked) {
  window_ = &OpenActive(
      folder_.Write("fixes.map",
                    "T\t\tOru\tUlo\t2003-3-1\nG\t8:00\tN0\tE0\nG\t9:00\tN0.001\tE0\n"
                    "G\t10:00\tN0\tE0.001\nG\t11:00\tN0.001\tE0.001\nR\tUlos\nK\tOru\n"));
  Export("fixes.gpkg", [](ExportDialog& dialog) {
    auto& tick = In<QCheckBox>(dialog, "estimates");
    EXPECT_TRUE(tick.isEnabled());
    EXPECT_FALSE(tick.isChecked());
    PressAlt(dialog, Qt::Key_U);  // Untick All
    PressAlt(dialog, Qt::Key_I);
    EXPECT_TRUE(tick.isChecked());
    PressReturn(dialog);
  });
  EXPECT_EQ(Texts(),
            std::vector<std::string>{"Exported estimates to " + folder_.Path("fixes.gpkg") +
                                     ": 4 features in EPSG:4326"});
  ExpectIn(ListedByOgrinfo(folder_, "fixes.gpkg", "-al"),
           "  caption (String) = Kernel, 95 % of the density\n  method (String) = kernel\n");
}

TEST_F(ExportWindowTest, SettingsAreRememberedOnceTheyAreAccepted) {
  Export("site.csv", [](ExportDialog& dialog) {
    QTest::keyClicks(dialog.focusWidget(), QStringLiteral("CSV"));
    In<QLineEdit>(dialog, "number").setFocus();
    QTest::keyClicks(dialog.focusWidget(), QStringLiteral("3857"));
    EXPECT_TRUE(In<QRadioButton>(dialog, "epsg").isChecked());
    PressAlt(dialog, Qt::Key_A);
    PressReturn(dialog);
  });
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("site-points.csv")));
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("site-areas.csv")));
  Export("", [](ExportDialog& dialog) {
    EXPECT_TRUE(In<QComboBox>(dialog, "format").currentText().startsWith(QStringLiteral("CSV")));
    EXPECT_EQ(In<QLineEdit>(dialog, "number").text(), QStringLiteral("3857"));
    EXPECT_TRUE(In<QRadioButton>(dialog, "epsg").isChecked());
    EXPECT_FALSE(In<QCheckBox>(dialog, "areas").isChecked());
    EXPECT_TRUE(In<QCheckBox>(dialog, "points").isChecked());
    PressAlt(dialog, Qt::Key_P);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  Export("",
         [](ExportDialog& dialog) { EXPECT_TRUE(In<QCheckBox>(dialog, "points").isChecked()); });
}

TEST_F(ExportWindowTest, ARefusalLeavesTheDialogOpenAtItsField) {
  Export("", [this](ExportDialog& dialog) {
    PressAlt(dialog, Qt::Key_U);
    PressAlt(dialog, Qt::Key_X);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.focusWidget(), &In<QCheckBox>(dialog, "points"));
    PressAlt(dialog, Qt::Key_L);
    EXPECT_TRUE(In<QCheckBox>(dialog, "contours").isChecked());
    PressAlt(dialog, Qt::Key_E);
    PressReturn(dialog);
    EXPECT_EQ(dialog.focusWidget(), &In<QLineEdit>(dialog, "number"));
    QTest::keyClicks(dialog.focusWidget(), QStringLiteral("999999"));
    PressReturn(dialog);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Texts(), (std::vector<std::string>{"You must tick a layer", "Bad EPSG number: ",
                                                 "No coordinate system EPSG:999999"}));
  });
  EXPECT_TRUE(dialogs_->questions.empty());
}

TEST_F(ExportWindowTest, OnlyWhatTheFormatTakesCanBeChosen) {
  Export("site.geojson", [](ExportDialog& dialog) {
    auto& format = In<QComboBox>(dialog, "format");
    auto& layers = In<QGroupBox>(dialog, "layers");
    auto& systems = In<QGroupBox>(dialog, "systems");
    EXPECT_EQ(format.count(), 6);
    EXPECT_TRUE(layers.isEnabled() && systems.isEnabled());
    QTest::keyClick(&format, Qt::Key_Down);
    EXPECT_TRUE(format.currentText().startsWith(QStringLiteral("KML")));
    EXPECT_TRUE(layers.isEnabled() && !systems.isEnabled());
    QTest::keyClick(&format, Qt::Key_End);
    EXPECT_TRUE(format.currentText().startsWith(QStringLiteral("GeoJSON")));
    EXPECT_FALSE(layers.isEnabled() || systems.isEnabled());
    PressReturn(dialog);
  });
  EXPECT_EQ(Texts(),
            std::vector<std::string>{"Exported everything to " + folder_.Path("site.geojson")});
  ExpectIn(folder_.Read("site.geojson"), "\"kind\":\"trail\"");
}

TEST_F(ExportWindowTest, AMapWithoutContoursOffersNone) {
  window_ = &OpenActive(WriteMap("plain.map"));
  Export("plain.kml", [](ExportDialog& dialog) {
    EXPECT_FALSE(In<QCheckBox>(dialog, "contours").isEnabled());
    QTest::keyClick(&In<QComboBox>(dialog, "format"), Qt::Key_Down);
    PressReturn(dialog);
  });
  ASSERT_EQ(Texts().size(), 1U);
  EXPECT_EQ(Texts()[0].find("contours"), std::string::npos);
  ExpectIn(folder_.Read("plain.kml"), "<name>plain.map</name>");
}

TEST_F(ExportWindowTest, AsksBeforeItReplacesTheFilesOfLayers) {
  folder_.Write("site-points.csv", "old");
  const auto choose = [](ExportDialog& dialog) {
    In<QComboBox>(dialog, "format").setFocus();
    QTest::keyClicks(dialog.focusWidget(), QStringLiteral("CSV"));
    PressReturn(dialog);
  };
  messages_.answers = {2};
  Export("site.csv", choose);
  EXPECT_EQ(folder_.Read("site-points.csv"), "old");
  EXPECT_EQ(Texts(), Nothing);
  messages_.answers = {1};
  Export("site.csv", choose);
  EXPECT_NE(folder_.Read("site-points.csv"), "old");
  EXPECT_EQ(Texts().size(), 1U);
}

TEST_F(ExportWindowTest, CanceledWorkLeavesTheOldFile) {
  std::string text;
  for (int i = 0; i < 3000; ++i) {
    const std::string number = std::to_string(i);
    text += "G\tP" + number + "\tN1 0." + number + "'\tE10\n";
  }
  window_ = &OpenActive(folder_.Write("large.map", text));
  messages_.Clear();
  const std::string ends[] = {"gpkg", "geojson"};
  for (const std::string& ending : ends) {
    int boxes = 0;
    std::chrono::milliseconds now{0};
    around_.clock = [&] {
      for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<ProgressBox*>(widget);
        if (box == nullptr || !box->isVisible()) continue;
        ++boxes;
        QTest::keyClick(box, Qt::Key_Escape);
      }
      return now += std::chrono::milliseconds(300);
    };
    folder_.Write("large." + ending, "old");
    Export("large." + ending, [&](ExportDialog& dialog) {
      if (ending == "geojson") QTest::keyClick(&In<QComboBox>(dialog, "format"), Qt::Key_End);
      PressReturn(dialog);
    });
    EXPECT_GE(boxes, 1) << ending;
    EXPECT_EQ(folder_.Read("large." + ending), "old");
    EXPECT_EQ(Texts(), Nothing);
    around_.clock = {};
  }
}

TEST_F(ExportWindowTest, WithoutTheModuleItSaysWhatToInstall) {
  ExportFields fields;
  const LoadedModule missing{nullptr, "it is not installed"};
  ExportDialog dialog(window_->TheMap(), fields, missing, window_);
  dialog.show();
  const auto* said = dialog.findChild<QLabel*>(QStringLiteral("missingModule"));
  ASSERT_NE(said, nullptr);
  EXPECT_EQ(said->text().toStdString(),
            "GeoPackage, KML, GPX, FlatGeobuf and CSV need the package orvane-gis: it is not "
            "installed");
  EXPECT_EQ(In<QComboBox>(dialog, "format").count(), 1);
  dialog.accept();
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(fields.format, ExportFormat::GeoJson);
}

}  // namespace
}  // namespace orvane

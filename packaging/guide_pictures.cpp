// Makes the pictures of windows that the guide shows, from the windows themselves on the example
// site. They look the same on every machine: locale, time zone, colours and icons are fixed here, the
// fonts by scripts/make-pictures, which calls this.
//
//   guide_pictures SITE FOLDER
//
// SITE is the folder of the example; the pictures are written to FOLDER.

#include "base/dates.h"
#include "base/files.h"
#include "commands/reload_map.h"
#include "entry/fix_draft.h"
#include "entry/gis_import.h"
#include "model/workspace.h"
#include "panes/delete_rows.h"
#include "panes/pane_clicks.h"
#include "reports/profile_choice.h"
#include "shell/editors/cell_table_view.h"
#include "shell/editors/editor_commands.h"
#include "shell/editors/trail_editor_window.h"
#include "shell/entry/fix_import_window.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/entry/sheet_dialog.h"
#include "shell/map/map_note.h"
#include "shell/map/map_view.h"
#include "shell/map/orientation_dialog.h"
#include "shell/map/reload_bar.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/messages/messages_window.h"
#include "shell/output/export_dialog.h"
#include "shell/print/print_map_dialog.h"
#include "shell/program.h"
#include "shell/recovery/recovery_dialog.h"
#include "shell/reports/elevation_plot.h"
#include "shell/reports/elevation_window.h"
#include "shell/reports/point_index_window.h"
#include "shell/reports/range_estimates_window.h"
#include "shell/reports/range_stats_window.h"
#include "shell/reports/report_commands.h"
#include "shell/reports/survey_quality_window.h"
#include "shell/reports/trail_summary_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QIcon>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace orvane {

namespace {

constexpr QSize WindowSize(1000, 680);
constexpr QSize EditorSize(780, 420);
constexpr QSize ProfileSize(780, 360);
constexpr QSize QualitySize(860, 420);
constexpr int Settling = 100;    ///< milliseconds; a window is laid out and painted by then
constexpr int Patience = 60000;  ///< milliseconds; a busy machine may need so long
constexpr int BoxInterval = 50;  ///< milliseconds between two looks for a box

void LetPass(int milliseconds) {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < milliseconds) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// Handles events until a condition holds.
/// \return false if it does not hold within `Patience`
bool WaitFor(const std::function<bool()>& condition) {
  QElapsedTimer timer;
  timer.start();
  while (!condition()) {
    if (timer.elapsed() > Patience) return false;
    LetPass(BoxInterval);
  }
  return true;
}

/// Whether a map still shows the note with its credits.
bool ShowsNote(const MapWindowWidget& window) {
  const auto* note = window.findChild<MapNote*>();
  return note != nullptr && note->isVisible();
}

class GuidePictures {
 public:
  GuidePictures(QString site, QString folder) : site_(std::move(site)), folder_(std::move(folder)) {
    shell_.TheSettings().dialogDirectory = site_.toStdString();
  }

  ~GuidePictures() {
    for (Map& map : workspace_.maps) map.flags &= ~std::uint32_t{MapDirty};
    while (!shell_.Windows().All().empty()) shell_.Windows().All().front()->TryClose();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  /// \return false if a picture could not be written
  bool Make() {
    MapWindowWidget* const window = shell_.OpenFile(site_.toStdString() + "/season.map");
    if (window == nullptr) return false;
    window->resize(WindowSize);
    LetPass(Settling);
    good_ = WaitFor([window] { return !ShowsNote(*window); });
    ShowMap(*window);
    ShowDialogs(*window);
    ShowEditors(*window);
    ShowUndo(*window);
    ShowProfile();
    ShowReports(*window);
    ShowQuality();
    ShowMessages();
    ShowTutorial();
    return good_;
  }

 private:
  /// Writes what a window shows, with a thin frame where it ends.
  void Save(QWidget& widget, const QString& name) { Save(widget.grab(), name); }
  void Save(QPixmap picture, const QString& name) {
    QPainter painter(&picture);
    painter.setPen(Qt::gray);
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    painter.end();
    if (picture.save(folder_ + QLatin1Char('/') + name + QStringLiteral(".png"))) return;
    std::fprintf(stderr, "guide_pictures: can't write %s\n", qPrintable(name));
    good_ = false;
  }

  void SendMouse(QWidget& widget, QEvent::Type type, QPoint place, Qt::MouseButtons held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
    LetPass(Settling);
  }

  void ShowMap(MapWindowWidget& window) {
    MapView& view = window.View();
    constexpr QPoint Begin(260, 180);
    constexpr QPoint End(560, 420);
    SendMouse(view, QEvent::MouseMove, Begin, Qt::NoButton);
    Save(window, QStringLiteral("window"));
    SendMouse(view, QEvent::MouseButtonPress, Begin, Qt::LeftButton);
    SendMouse(view, QEvent::MouseMove, End, Qt::LeftButton);
    Save(window, QStringLiteral("measuring"));
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&view, &escape);
    const Map& map = window.TheMap();
    window.Offer().Show(QString::fromStdString(NewsText(map, map, map.fileName)));
    LetPass(Settling);
    Save(window, QStringLiteral("reload"));
    window.Offer().Show({});
    LetPass(Settling);
  }

  void ShowDialogs(MapWindowWidget& window) {
    SaveShown(std::make_unique<OrientationDialog>(window.Shown(), surroundings_, &window),
              QStringLiteral("orientation"));
    constexpr PageDevice A4{.height = 6543,
                            .width = 4488,
                            .verticalResolution = 600,
                            .horizontalResolution = 600,
                            .marginBelow = 236};
    PrintMapWindow print = MakePrintView(window.Shown(), A4);
    PrintSettings settings;
    SaveShown(std::make_unique<PrintMapDialog>(print, settings, boxes_, &window),
              QStringLiteral("print-dialog"));
    SaveBoxes(QStringLiteral("question"), 1, [this] {
      boxes_.Ask("Save Map?", {"Save", "Cancel", "Don't Save"},
                 "season.map has changed, do you want to save it?");
    });
    RecoveryOffer offer;
    offer.copy.record.fileName = "/home/field/season.map";
    offer.copy.written = 1078484400;  // 5 March 2004
    offer.differences = {"2 trails more than in the file.", "41 points more than in the file."};
    SaveShown(std::make_unique<RecoveryDialog>(std::vector{offer}, &window),
              QStringLiteral("recovery"));
    auto import =
        StartGisImport(window.TheMap(), site_.toStdString() + "/gps-tracks.txt", gisBoxes_);
    if (!import) {
      good_ = false;
      return;
    }
    SaveShown(std::make_unique<GisTrailWindow>(shell_, std::move(*import), gisBoxes_, &window),
              QStringLiteral("gis-trail"));
    SaveFixImport(window);
    // Those of the example sheet.
    SheetFields columns{"2", "D", "E", "B", "", "A", "", "C", "", "F"};
    columns[SheetSm1Code] = "fruit";
    columns[SheetSm2Code] = "leaf";
    columns[SheetSm3Code] = "rest";
    SaveShown(std::make_unique<SheetDialog>(window.TheMap(), columns, &window),
              QStringLiteral("sheet-dialog"));
    ExportFields fields;
    fields.system = ExportSystem::Utm;
    SaveShown(std::make_unique<ExportDialog>(window.TheMap(), fields, LoadFormatModule(), &window),
              QStringLiteral("export"));
  }

  void SaveFixImport(MapWindowWidget& window) {
    const std::string table = site_.toStdString() + "/collars.csv";
    auto text = ReadFixText(workspace_.messages, table, {});
    if (!text) {
      good_ = false;
      return;
    }
    FixDraft draft(window.TheMap(), table, std::move(*text));
    FixForm form;
    form.maxSpeed = "10";
    SaveShown(std::make_unique<FixImportWindow>(shell_, draft, form, window, &window),
              QStringLiteral("import-fixes"));
  }

  void ShowEditors(MapWindowWidget& window) {
    auto& editors = *shell_.findChild<Editors*>();
    const auto save = [this](EditorWindow& editor, size_t row, size_t column, const char* name) {
      // The same width on every machine, whatever its screen.
      editor.resize(EditorSize);
      editor.Cells().OpenCell(row, column);
      LetPass(Settling);
      Save(editor, QLatin1String(name));
      editor.Cells().Leave();
      editor.TryClose();
    };
    for (Trail& trail : window.TheMap().trails) {
      if (trail.focalAnimal != "Pim" || trail.date != PackDate(2003, 3, 5)) continue;
      save(editors.OpenTrail(window, &trail), 2, ColumnPoint, "trail-editor");
    }
    for (RangePanelRow& row : window.View().Shown().rangeViews) {
      if (row.text != "Oru mornings") continue;
      save(editors.OpenRange(window, &row), 1, ColumnType, "range-editor");
    }
  }

  /// The profile of a trail, with the pointer on it.
  void ShowProfile() {
    MapWindowWidget* const window = shell_.OpenFile(site_.toStdString() + "/trails.map");
    for (TrailPanelRow* row : TrailRowsInOrder(window->Shown().trailViews)) {
      row->selected = row->trail != nullptr && row->trail->name == "Kana";
    }
    auto view = OpenSelectedProfile(window->Shown());
    // It deletes itself when it is closed.
    auto* profile = new ElevationWindow(shell_, *window, std::move(view.value()));
    profile->resize(ProfileSize);
    profile->show();
    LetPass(Settling);
    good_ = good_ && WaitFor([profile] { return profile->Plot().IsFilled(); });
    SendMouse(profile->Plot(), QEvent::MouseMove, {300, 100}, Qt::NoButton);
    Save(*profile, QStringLiteral("profile"));
    window->TryClose();  // and with it the profile
  }

  void ShowReports(MapWindowWidget& window) {
    auto& reports = *shell_.findChild<Reports*>();
    MapWindow& view = window.Shown();
    const auto save = [this](QWidget& report, QSize size, const char* name) {
      report.resize(size);  // the same on every machine, whatever its screen
      LetPass(Settling);
      Save(report, QLatin1String(name));
      report.close();
    };
    for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
      row->selected = row->trail != nullptr && row->trail->name.has_value();
    }
    for (RangePanelRow& row : view.rangeViews) row.selected = row.text == "Oru range";
    window.ShowRows();
    save(reports.OpenTrailSummary(window), EditorSize, "trail-summary");
    constexpr QSize IndexSize(600, 200);
    PointIndexWindow& index = reports.OpenPointIndex(window);
    index.resize(IndexSize);
    LetPass(Settling);
    index.FindInPointIndex("Fig11");
    save(index, IndexSize, "point-index");
    constexpr QSize StatsSize(700, 640);
    save(reports.OpenRangeStats(window), StatsSize, "range-stats");
    for (RangePanelRow& row : view.rangeViews) {
      row.selected = row.text == "Oru range" || row.text == "Fen range";
    }
    window.ShowRows();
    constexpr QSize EstimatesSize(900, 760);
    save(reports.OpenRangeEstimates(window), EstimatesSize, "range-estimates");
  }

  /// The quality of the survey of the example, and of the same with a bearing read backwards.
  void ShowQuality() {
    const std::string path = site_.toStdString() + "/trails.map";
    MapWindowWidget* const window = shell_.OpenFile(path);
    auto& reports = *shell_.findChild<Reports*>();
    SurveyQualityWindow& quality = reports.OpenSurveyQuality(*window);
    quality.resize(QualitySize);
    quality.findChild<QCheckBox*>(QStringLiteral("colourByError"))->setChecked(true);
    LetPass(Settling);
    Save(quality, QStringLiteral("survey-quality"));
    window->resize(WindowSize);
    LetPass(Settling);
    good_ = WaitFor([window] { return !ShowsNote(*window); }) && good_;
    Save(*window, QStringLiteral("colour-by-error"));
    window->TryClose();  // and with it the report

    std::string text = ReadWholeFile(path).value_or("");
    constexpr std::string_view Sound = "C\tKana750\tKana725\t24.7\t255\t";
    constexpr std::string_view Blunder = "C\tKana750\tKana725\t24.7\t75\t";
    const size_t at = text.find(Sound);
    good_ = at != text.npos && good_;
    if (at == text.npos) return;
    text.replace(at, Sound.size(), Blunder);
    const QTemporaryDir scratch;
    const QString planted = scratch.filePath(QStringLiteral("trails.map"));
    QFile file(planted);
    good_ = file.open(QIODevice::WriteOnly) && good_;
    file.write(text.data(), static_cast<qint64>(text.size()));
    file.close();
    MapWindowWidget* const wrong = shell_.OpenFile(planted.toStdString());
    SurveyQualityWindow& named = reports.OpenSurveyQuality(*wrong);
    named.resize(QualitySize);
    LetPass(Settling);
    Save(named, QStringLiteral("survey-blunder"));
    wrong->TryClose();
  }

  /// The map of the tutorial: its first trail while it is typed, its range, and the figures of that.
  void ShowTutorial() {
    MapWindowWidget* const window = shell_.OpenFile(site_.toStdString() + "/../ridge/tassel.map");
    if (window == nullptr) {
      good_ = false;
      return;
    }
    window->resize(WindowSize);
    LetPass(Settling);
    MapWindow& view = window->Shown();
    for (RangePanelRow& row : view.rangeViews) {
      row.selected = row.range != nullptr;
      row.drawMode = RangeDrawMode::CoreGrid;
      constexpr std::uint32_t Levels = 0x411;  // 100 %, 80 % and 50 %
      row.clusterMask = Levels;
    }
    window->ShowWhole();
    window->ShowRows();
    LetPass(Settling);
    Save(*window, QStringLiteral("tutorial-range"));
    auto& reports = *shell_.findChild<Reports*>();
    constexpr QSize StatsSize(700, 640);
    RangeStatsWindow& stats = reports.OpenRangeStats(*window);
    stats.resize(StatsSize);
    LetPass(Settling);
    Save(stats, QStringLiteral("tutorial-stats"));
    TypeFirstTrail(*window);
    window->TryClose();
  }

  void TypeFirstTrail(MapWindowWidget& window) {
    TrailEditorWindow& editor = shell_.findChild<Editors*>()->OpenTrail(window, nullptr);
    editor.resize(EditorSize);
    editor.findChild<QComboBox*>(QStringLiteral("TrailType"))->setEditText(QStringLiteral("Trail"));
    editor.findChild<QLineEdit*>(QStringLiteral("Name"))->setText(QStringLiteral("Ridge"));
    editor.findChild<QRadioButton*>(QStringLiteral("GPS"))->click();
    size_t row = 0;
    for (const std::array<const char*, 4>& cells :
         {std::array{"Ridge0", "N1 22.400", "E115 36.900", "240"},
          std::array{"Ridge100", "N1 22.412", "E115 36.952", "246"},
          std::array{"Ridge200", "N1 22.426", "E115 37.004", "255"},
          std::array{"Ridge300", "N1 22.428", "E115 37.058", "261"},
          std::array{"Ridge400", "N1 22.420", "E115 37.111", "258"},
          std::array{"Ridge500", "N1 22.404", "E115 37.162", "251"}}) {
      for (size_t column = 0; column < cells.size(); ++column) {
        editor.Cells().Table().Model().SetCell(row, column, cells.at(column));
      }
      ++row;
      editor.Cells().RowAdded();
    }
    editor.Cells().OpenCell(row - 1, 3);
    LetPass(Settling);
    Save(editor, QStringLiteral("tutorial-editor"));
    editor.findChild<QPushButton*>(QStringLiteral("cancel"))->click();
  }

  /// The menu over the window, after a deletion.
  void ShowUndo(MapWindowWidget& window) {
    MapWindow& view = window.Shown();
    for (TrailPanelRow& row : view.trailViews) {
      if (row.text == "Fen group") ClickTrailRow(view, &row, false);
    }
    DeleteSelectedTrails(view, shell_.History());
    LetPass(Settling);
    auto* menu = window.findChild<QMenu*>(QStringLiteral("menuEdit"));
    const QRect title = window.menuBar()->actionGeometry(menu->menuAction());
    menu->popup(window.menuBar()->mapToGlobal(title.bottomLeft()));
    LetPass(Settling);
    QPixmap picture = window.grab();
    QPainter(&picture).drawPixmap(window.menuBar()->mapTo(&window, title.bottomLeft()),
                                  menu->grab());
    menu->close();
    Save(picture, QStringLiteral("undo"));
    shell_.History().Undo(window.TheMap());
  }

  void ShowMessages() {
    const QTemporaryDir scratch;
    const QString path = scratch.filePath(QStringLiteral("notebook.map"));
    QFile file(path);
    good_ = file.open(QIODevice::WriteOnly) && good_;
    file.write(
        "T\tRidge\tTrail\n"
        "G\tCamp\tN1\tE115\n"
        "C\tHide\tCamp\t2o0\t35\n"
        "C\tFig1\tHide\t40\t18o\n"
        "C\tFig2\tFig1\t35\t9S\n"
        "Q\tFig2\n"
        "C\tFig3\tFig2\t4O\t95\n");
    file.close();
    boxes_.Log().Clear();  // without the notes of earlier pictures
    constexpr int BoxWithCheck = 3;
    SaveBoxes(QStringLiteral("message"), BoxWithCheck,
              [&] { shell_.OpenFile(path.toStdString()); });
    auto window = std::make_unique<MessagesWindow>(boxes_.Log(), surroundings_);
    window->resize(WindowSize.width() * 7 / 10, WindowSize.height() / 3);
    SaveShown(std::move(window), QStringLiteral("messages"));
  }

  void SaveShown(std::unique_ptr<QWidget> widget, const QString& name) {
    widget->show();
    QWidget* const shown = widget.get();
    const bool isActive = WaitFor([shown] {
      if (QApplication::activeWindow() == shown) return true;
      shown->activateWindow();  // again: a map that was opened takes the focus a little later
      return false;
    });
    if (!isActive) std::fprintf(stderr, "guide_pictures: no focus for %s\n", qPrintable(name));
    good_ = isActive && good_;
    LetPass(Settling);
    Save(*widget, name);
  }

  /// Runs what asks, and takes the picture of the box of that number, from 1. All boxes are closed.
  void SaveBoxes(const QString& name, int number, const std::function<void()>& ask) {
    int shown = 0;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, [&] {
      QWidget* const box = QApplication::activeModalWidget();
      // The button with the focus looks different once the box is active.
      if (box == nullptr || QApplication::activeWindow() != box) return;
      if (++shown == number) Save(*box, name);
      for (QCheckBox* check : box->findChildren<QCheckBox*>()) check->setChecked(true);
      box->close();
    });
    looks.start(BoxInterval);
    ask();
    if (shown >= number) return;
    std::fprintf(stderr, "guide_pictures: only %d boxes for %s\n", shown, qPrintable(name));
    good_ = false;
  }

  QString site_;
  QString folder_;
  DesktopSurroundings surroundings_;
  BoxMessages boxes_{surroundings_};
  Workspace workspace_{boxes_};
  Program program_{workspace_, boxes_, surroundings_};
  Shell& shell_ = program_.TheShell();
  GisBoxes gisBoxes_;
  bool good_ = true;
};

}  // namespace

}  // namespace orvane

int main(int argc, char** argv) {
  qputenv("TZ", "UTC");
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  QGuiApplication::setDesktopSettingsAware(false);
  const QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("fusion"));
  QApplication::setCursorFlashTime(0);  // the cursor does not blink
  QIcon::setThemeSearchPaths({});
  constexpr int Arguments = 3;
  if (argc != Arguments) {
    std::fputs("usage: guide_pictures SITE FOLDER\n", stderr);
    return 2;
  }
  QApplication::setQuitOnLastWindowClosed(false);
  orvane::GuidePictures pictures(QFile::decodeName(argv[1]), QFile::decodeName(argv[2]));
  return pictures.Make() ? 0 : 1;
}

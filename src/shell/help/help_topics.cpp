#include "shell/help/help_topics.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

#include <algorithm>
#include <array>

namespace orvane {
namespace {

constexpr std::array Topics{
    // Windows and their parts.
    HelpTopic{"taskWindow", HelpContentsPage},
    HelpTopic{"mapWindow", "window.html"},
    HelpTopic{"mapView", "window.html#moving-about"},
    HelpTopic{"infoPanel", "window.html#the-info-panel"},
    HelpTopic{"trailList", "window.html#the-lists"},
    HelpTopic{"rangeList", "window.html#the-lists"},
    HelpTopic{"messagesWindow", "messages.html#the-messages-window"},
    HelpTopic{"textViewer", "messages.html#the-messages-window"},
    HelpTopic{"trailEditor", "trail-editor.html"},
    HelpTopic{"rangeEditor", "range-editor.html"},
    HelpTopic{"cellTable", "trail-editor.html#the-table"},
    HelpTopic{"elevationWindow", "profiles.html#the-elevation-window"},
    HelpTopic{"trailSummary", "reports.html#the-trail-summary"},
    HelpTopic{"pointIndex", "reports.html#the-point-index"},
    HelpTopic{"rangeStats", "reports.html#range-stats"},
    HelpTopic{"rangeEstimates", "estimates.html#the-window"},
    HelpTopic{"surveyQuality", "quality.html#the-window"},
    HelpTopic{"gisTrail", "gps-files.html#tracks"},
    // Dialogs.
    HelpTopic{"aboutBox", "overview.html"},
    HelpTopic{"fixImport", "animal-fixes.html#the-window"},
    HelpTopic{"sheetDialog", "field-sheet.html#the-fields"},
    HelpTopic{"exportDialog", "export.html#the-window"},
    HelpTopic{"previewWindow", "field-sheet.html#the-preview"},
    HelpTopic{"orientationDialog", "window.html#which-way-is-up"},
    HelpTopic{"printMapDialog", "printing.html#the-map-dialog"},
    HelpTopic{"pageSetup", "printing.html"},
    HelpTopic{"choosePrinter", "printing.html"},
    HelpTopic{"printPreview", "printing.html"},
    HelpTopic{"recoveryDialog", "safety.html#recovery-copies"},
    HelpTopic{"fileDialog", "commands.html#file"},
    HelpTopic{"messageBox", "messages.html"},
    HelpTopic{"questionBox", "messages.html#questions"},
    HelpTopic{"promptBox", "messages.html#questions"},
    // Menus, and the entries that have a chapter of their own.
    HelpTopic{"menuFile", "commands.html#file"},
    HelpTopic{"menuEdit", "commands.html#edit"},
    HelpTopic{"menuMap", "commands.html#map"},
    HelpTopic{"menuAnalysis", "commands.html#analysis"},
    HelpTopic{"menuView", "commands.html#view"},
    HelpTopic{"menuWindow", "commands.html#window-and-help"},
    HelpTopic{"menuHelp", "commands.html#window-and-help"},
    HelpTopic{"command1036", "saving.html"},
    HelpTopic{"command1037", "saving.html"},
    HelpTopic{"command1052", "saving.html"},
    HelpTopic{"command1053", "export.html"},
    HelpTopic{"command1010", "trail-editor.html#clicks-on-the-map"},
    HelpTopic{"command1059", "trail-editor.html"},
    HelpTopic{"command40011", "undo.html#undo-and-redo"},
    HelpTopic{"command40012", "undo.html#undo-and-redo"},
    HelpTopic{"command1032", "undo.html#deleting"},
    HelpTopic{"command1025", "field-sheet.html"},
    HelpTopic{"command1013", "commands.html#import-gis"},
    HelpTopic{"command40018", "animal-fixes.html#the-window"},
    HelpTopic{"command1040", "checking.html"},
    HelpTopic{"command1015", "window.html#which-way-is-up"},
    HelpTopic{"command1019", "profiles.html#the-elevation-window"},
    HelpTopic{"command1021", "reports.html#the-trail-summary"},
    HelpTopic{"command1026", "reports.html#the-point-index"},
    HelpTopic{"command1051", "reports.html#range-stats"},
    HelpTopic{"command40015", "quality.html#the-window"},
    HelpTopic{"command40016", "estimates.html#the-window"},
    HelpTopic{"command40017", "export.html#the-window"},
    HelpTopic{"command1047", "window.html#the-scale"},
    HelpTopic{"command1011", "window.html#finding-a-place"},
    HelpTopic{"command1008", "window.html#the-info-panel"},
    HelpTopic{"command1002", "printing.html"},
    HelpTopic{"command1003", "printing.html"},
    HelpTopic{"command40013", "printing.html"},
    HelpTopic{"command40007", "messages.html#the-messages-window"},
};

}  // namespace

std::span<const HelpTopic> AllHelpTopics() { return Topics; }

std::string_view HelpPageOf(const QString& objectName) {
  const QByteArray name = objectName.toUtf8();
  const auto* const found = std::find_if(Topics.begin(), Topics.end(), [&](const HelpTopic& topic) {
    return topic.objectName == std::string_view(name.constData(), static_cast<size_t>(name.size()));
  });
  return found == Topics.end() ? std::string_view() : found->page;
}

std::string_view HelpPageAt(const QWidget& control) {
  if (const auto* menu = qobject_cast<const QMenu*>(&control)) {
    const QAction* entry = menu->activeAction();
    const std::string_view page =
        entry != nullptr ? HelpPageOf(entry->objectName()) : std::string_view();
    if (!page.empty()) return page;
  }
  for (const QWidget* each = &control; each != nullptr; each = each->parentWidget()) {
    const std::string_view page = HelpPageOf(each->objectName());
    if (!page.empty()) return page;
    // A dialog is not a part of the window that it belongs to.
    if (each->isWindow()) break;
  }
  return HelpContentsPage;
}

}  // namespace orvane

#include "shell/reports/report_window.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "paint/display_text.h"
#include "shell/command_menu.h"
#include "shell/files/dialog_start.h"
#include "shell/files/picture_files.h"
#include "shell/list_menus.h"
#include "shell/map_window_widget.h"
#include "shell/plain_texts.h"
#include "shell/shell.h"

#include <QCloseEvent>

namespace orvane {

ReportWindow::ReportWindow(Shell& shell, MapWindowWidget& mapWindow, WindowKind kind,
                           const QString& name)
    : ProgramWindow(kind),
      shell_(shell),
      mapWindow_(&mapWindow),
      commands_(new CommandMenu(*this)) {
  setObjectName(name);
  setAttribute(Qt::WA_DeleteOnClose);
  mapWindow.AddDependent(*this);
  connect(&mapWindow, &MapWindowWidget::rowsChanged, this, [this] {
    FollowMap();
    ShowMenu();
  });
  // A map window may be deleted without being closed.
  connect(&mapWindow, &QObject::destroyed, this, [this] {
    DropMap();
    deleteLater();
  });
  connect(&shell_.Maps(), &OpenMaps::stepsChanged, this, &ReportWindow::ShowMenu);
  connect(commands_, &CommandMenu::picked, this, [this](int id) {
    shell_.Commands().Run(id, *this);
    ShowMenu();  // a command that did nothing has still toggled its check mark
  });
  PlugListMenus(shell_, *commands_);
}

ReportWindow::~ReportWindow() {
  if (mapWindow_) mapWindow_->RemoveDependent(*this);
}

MapWindowWidget* ReportWindow::MapSide() { return mapWindow_; }

MapWindowWidget& ReportWindow::TheMapWindow() { return *mapWindow_; }

void ReportWindow::ShowTitle(const std::string& title) {
  setWindowTitle(PlainTitle(DisplayText(title)));
}

void ReportWindow::ShowMenu() {
  if (!mapWindow_) return;
  MenuState menu = MakeMenu(mapWindow_->TheMap());
  FollowSteps(menu, shell_.History(), mapWindow_->TheMap());
  menu.At(CommandFullScreen).checked = isFullScreen();
  commands_->Show(menu, [this](CommandId id) { return shell_.Commands().IsPlugged(id); });
}

bool ReportWindow::Answer(CommandId id) {
  switch (id) {
    case CommandSaveAs:
    case CommandSaveSimplyAs:
      return SaveText();
    case CommandCopy:
      return CopyLines();
    case CommandAdd:
      return SelectAllLines();
    case CommandCopyImage: {
      const auto picture = PictureToSave();
      if (picture) CopyPicture(*picture);
      return picture.has_value();
    }
    case CommandSavePicture:
      return SavePicture();
    case CommandFind:
      return Find();
    default:
      return false;
  }
}

bool ReportWindow::SaveText() {
  const auto report = FileToSave();
  if (!report) return false;
  FileSpecifications& files = shell_.Maps().Files();
  PrepareSpecification(files.reports, files.maps, StartOfDialogs(shell_, *this), "txt");
  SaveReport(*report, shell_.Dialogs(), files.reports, shell_.TheWorkspace().messages);
  return true;
}

void ReportWindow::CopyPicture(const ReportPicture& picture) {
  std::string error;
  const auto png = RenderDrawing(picture.drawing, PictureFormat::Png,
                                 PictureOptionsOf(shell_, *this, picture.name), error);
  CopyPng(png, error, picture.numbers, shell_.TheWorkspace().messages);
}

bool ReportWindow::SavePicture() {
  const auto picture = PictureToSave();
  if (!picture) return false;
  FileSpecification& file = shell_.Maps().Files().charts;
  file.withTable = true;
  const std::string title = "Save Picture of " + std::string(MenuFacts().picture) + "...";
  const auto path = AskPictureFile(shell_, *this, title, picture->name, file);
  if (!path) return true;
  Messages& messages = shell_.TheWorkspace().messages;
  if (IsTableFile(*path)) {
    WriteReport(*path, picture->numbers, messages);
    return true;
  }
  std::string error;
  if (!RenderDrawing(picture->drawing, PictureOptionsOf(shell_, *this, picture->name), *path,
                     error)) {
    NoteError(messages, "%s", {error});
  }
  return true;
}

bool ReportWindow::TryClose() {
  close();
  return true;
}

void ReportWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  const bool resized = event->type() == QEvent::WindowStateChange;
  if (resized || (event->type() == QEvent::ActivationChange && isActiveWindow())) ShowMenu();
}

void ReportWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  if (mapWindow_) mapWindow_->RemoveDependent(*this);
}

}  // namespace orvane

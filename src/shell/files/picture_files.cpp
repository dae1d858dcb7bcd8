#include "shell/files/picture_files.h"

#include "base/messages.h"
#include "base/text.h"
#include "commands/save_map.h"
#include "model/workspace.h"
#include "paint/display_text.h"
#include "shell/files/dialog_start.h"
#include "shell/shell.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QWidget>

#include <memory>
#include <utility>

namespace orvane {
namespace {

std::string_view EndingOf(std::string_view path) {
  const size_t dot = path.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : path.substr(dot + 1);
}

}  // namespace

RenderOptions PictureOptionsOf(Shell& shell, const QWidget& shown, std::string title) {
  RenderOptions options;
  options.antialias = shell.TheWorkspace().preferences.smoothLines;
  options.pixelsPerInch = shown.logicalDpiY() * shown.devicePixelRatioF();
  options.title = std::move(title);
  return options;
}

bool IsTableFile(std::string_view path) {
  return SameName(EndingOf(path), "txt") || SameName(EndingOf(path), "tsv");
}

std::optional<std::string> AskPictureFile(Shell& shell, ProgramWindow& window,
                                          const std::string& title, std::string_view name,
                                          FileSpecification& file) {
  PrepareSpecification(file, shell.Maps().Files().maps, StartOfDialogs(shell, window), "png");
  file.name = std::string(name) + "." + file.type;
  if (!WasChosen(shell.Dialogs().AskSave(title, file), shell.TheWorkspace().messages))
    return std::nullopt;
  const bool isTable = file.withTable && IsTableFile(file.name);
  if (isTable || PictureFormatOf(file.name)) file.type = EndingOf(file.name);
  return PathOf(file);
}

void CopyPng(const std::optional<std::string>& png, const std::string& error,
             const std::string& text, Messages& messages) {
  if (!png) {
    NoteError(messages, "%s", {error});
    return;
  }
  auto data = std::make_unique<QMimeData>();
  data->setImageData(
      QImage::fromData(reinterpret_cast<const uchar*>(png->data()), static_cast<int>(png->size())));
  if (!text.empty()) data->setText(DisplayText(text));
  QGuiApplication::clipboard()->setMimeData(data.release());  // which owns it from now on
}

}  // namespace orvane

#include "shell/files/dropped_files.h"

#include "shell/files/local_files.h"
#include "shell/shell.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMetaObject>

#include <string>

namespace orvane {

void WelcomeFiles(QDragEnterEvent& event) {
  if (HasLocalFiles(*event.mimeData())) event.acceptProposedAction();
}

void OpenDroppedFiles(Shell& shell, QDropEvent& event) {
  event.acceptProposedAction();
  const auto open = [&shell, files = LocalFilesOf(*event.mimeData())] {
    for (const std::string& file : files) {
      shell.Guard().Run([&] { shell.OpenFile(file); });
    }
  };
  QMetaObject::invokeMethod(&shell, open, Qt::QueuedConnection);
}

}  // namespace orvane

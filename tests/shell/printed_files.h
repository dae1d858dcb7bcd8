#pragma once

#include "shell/scripted_surroundings.h"
#include "support/temporary_folder.h"

#include <QPrinter>
#include <QString>

#include <functional>

namespace orvane {

/// Makes Print write "printed.pdf" into a folder, and Print Preview "preview.pdf".
inline void PrintToFiles(ScriptedPrinters& printers, const TemporaryFolder& folder) {
  const auto toPdf = [&folder](QPrinter& printer, const char* name) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(folder.Path(name)));
  };
  printers.choose = [toPdf](QPrinter& printer) {
    toPdf(printer, "printed.pdf");
    return true;
  };
  printers.preview = [toPdf](QPrinter& printer, const std::function<void(QPrinter&)>& draw) {
    toPdf(printer, "preview.pdf");
    draw(printer);
    return false;
  };
}

}  // namespace orvane

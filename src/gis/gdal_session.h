#pragma once

#include <cpl_error.h>
#include <string>

namespace orvane {

/// While it exists, GDAL is used: its drivers are there, its complaints are kept here and not
/// printed, and options hold that would otherwise outlive the call. One at a time.
class GdalSession {
 public:
  GdalSession();
  ~GdalSession();
  GdalSession(const GdalSession&) = delete;
  GdalSession& operator=(const GdalSession&) = delete;

  /// The first failure, in GDAL's words on one line; empty if there was none.
  const std::string& Failure() const { return failure_; }
  void Forget() { failure_.clear(); }

 private:
  static void Take(CPLErr severity, CPLErrorNum number, const char* text);

  std::string failure_;
};

}  // namespace orvane

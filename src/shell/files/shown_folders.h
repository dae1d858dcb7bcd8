#pragma once

#include <QString>

#include <string>
#include <vector>

namespace orvane {

/// Folders under names that the toolkit finds. It finds a folder only if all of its path is UTF-8. For
/// any other there is a link in a temporary folder, which is removed with this object.
class ShownFolders {
 public:
  ShownFolders() = default;
  ShownFolders(const ShownFolders&) = delete;
  ShownFolders& operator=(const ShownFolders&) = delete;
  ~ShownFolders();

  /// \param folder  the bytes of its path; one that is relative or does not exist gets no link
  /// \return a path by which the toolkit finds the folder. If no link can be made, the folder's own
  ///         path as people see it.
  QString NameOf(const std::string& folder);

  /// \param name  a path that the toolkit or the user gave
  /// \return its bytes, with the folders themselves instead of their links. A path beside a link is
  ///         beside the folder. The rest is as of `ExistingPath`.
  std::string PathOf(const QString& name) const;

 private:
  struct Link {
    QString place;       ///< the temporary folder
    QString name;        ///< the link in it
    std::string folder;  ///< where it leads
  };

  std::vector<Link> links_;
};

}  // namespace orvane

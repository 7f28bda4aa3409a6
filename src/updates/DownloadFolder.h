#pragma once

#include <QFile>
#include <QString>
#include <memory>

#include "base/Result.h"

namespace zolt {

/// The folder that updates are downloaded into, and nothing else is kept in. Main thread.
///
/// Of mode 0700, in it one folder for each running program that downloads, whose lock ends with the program. A package
/// stays there, as a temporary file, until it is kept; then it moves up under its own name, for the installer that it
/// is handed to. Everything else is removed at once, by `discard`, by the destructor, or, after a program was killed,
/// by the next one's start. Packages that were handed over go after a day, when they have been installed.
class DownloadFolder {
 public:
  /// `path` need not exist; nothing is made until something is downloaded.
  explicit DownloadFolder(QString path);
  ~DownloadFolder();
  DownloadFolder(const DownloadFolder&) = delete;
  DownloadFolder& operator=(const DownloadFolder&) = delete;

  /// Removes what earlier runs left behind; what other running programs use stays.
  void removeLeftovers();

  /// A new, empty file to write a package into, open; owned by the folder, until `keep` or `discard`. Fails, with the
  /// sentence to show, when it cannot be made for this user alone.
  Result<QFile*> begin();
  /// Ends the download under way, if any, and removes its file.
  void discard();
  /// Closes the package under way and gives it its name; the path of the file. The folder forgets it.
  Result<QString> keep(const QString& fileName);

 private:
  bool makePrivate(const QString& path) const;
  bool makeRunFolder();

  QString m_path;
  QString m_runFolder;  // empty until it is needed
  int m_lock = -1;
  std::unique_ptr<QFile> m_file;
};

}  // namespace zolt

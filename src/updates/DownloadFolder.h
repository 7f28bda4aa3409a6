#pragma once

#include <QFile>
#include <QString>
#include <memory>

#include "base/Result.h"

namespace zolt {

/// The folder for downloaded updates, which contains nothing else. Main thread.
///
/// It has mode 0700 and contains a folder for each running program that downloads, locked for as long as the program
/// runs. A package is a temporary file in that folder until it is kept; it then moves up under its own name, for the
/// installer. Everything else is removed by `discard`, by the destructor or, after a program was killed, by the next
/// one to start. Packages passed to the installer are removed after a day.
class DownloadFolder {
 public:
  /// `path` need not exist; nothing is created before a download.
  explicit DownloadFolder(QString path);
  ~DownloadFolder();
  DownloadFolder(const DownloadFolder&) = delete;
  DownloadFolder& operator=(const DownloadFolder&) = delete;

  /// Removes what earlier runs left behind, but nothing that another running program uses.
  void removeLeftovers();

  /// Opens a new, empty file for a package; owned by the folder, until `keep` or `discard`. Fails, with the sentence to
  /// show, if it cannot be created for this user alone.
  Result<QFile*> begin();
  /// Removes the file of the current download, if any.
  void discard();
  /// Closes the current package and moves it to its final name. Returns the path of the file, which the folder no
  /// longer owns.
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

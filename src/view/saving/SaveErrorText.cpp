#include "view/saving/SaveErrorText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace zolt {

namespace {

constexpr char kContext[] = "SaveErrorText";

struct Row {
  int error;
  const char* sentence;  // %1 is the file's name
};

constexpr char kNoRoom[] = QT_TRANSLATE_NOOP("SaveErrorText", "There is not enough free space for “%1”.");
constexpr char kNoPermission[] = QT_TRANSLATE_NOOP("SaveErrorText", "You do not have permission to write “%1”.");
constexpr char kNoFolder[] = QT_TRANSLATE_NOOP("SaveErrorText", "The folder for “%1” does not exist.");

constexpr std::array kRows{
    Row{ENOSPC, kNoRoom},
    Row{EDQUOT, kNoRoom},
    Row{EACCES, kNoPermission},
    Row{EPERM, kNoPermission},
    Row{ENOENT, kNoFolder},
    Row{ENOTDIR, kNoFolder},
    Row{EROFS, QT_TRANSLATE_NOOP("SaveErrorText", "“%1” cannot be written: the disk is read-only.")},
    Row{EFBIG, QT_TRANSLATE_NOOP("SaveErrorText", "“%1” would be larger than this disk allows a file to be.")},
    Row{EISDIR, QT_TRANSLATE_NOOP("SaveErrorText", "“%1” is a folder.")},
    Row{EEXIST, QT_TRANSLATE_NOOP("SaveErrorText", "“%1” is not a regular file and was not replaced.")},
    Row{ENAMETOOLONG, QT_TRANSLATE_NOOP("SaveErrorText", "The name “%1” is too long.")},
};

}  // namespace

QString saveErrorText(int error, const QString& file) {
  const QString name = QFileInfo(file).fileName();
  const auto* row = std::ranges::find(kRows, error, &Row::error);
  if (row != kRows.end()) return QCoreApplication::translate(kContext, row->sentence).arg(name);
  return QCoreApplication::translate(kContext, "“%1” could not be written: %2.")
      .arg(name, QString::fromLocal8Bit(std::strerror(error)));
}

}  // namespace zolt

#pragma once

#include <QString>

namespace zolt {

/// Why `file`, a path, could not be written, as a sentence for people. `error` is an `errno`, as ReplacementFile tells.
QString saveErrorText(int error, const QString& file);

}  // namespace zolt

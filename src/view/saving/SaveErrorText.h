#pragma once

#include <QString>

namespace zolt {

/// Why `file`, a path, could not be written, as a sentence for the user. `error` is an `errno`, as ReplacementFile
/// returns it.
QString saveErrorText(int error, const QString& file);

}  // namespace zolt

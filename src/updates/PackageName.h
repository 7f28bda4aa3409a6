#pragma once

#include <QString>
#include <QUrl>

namespace zolt {

/// A file name for the package at `url`, made from the last part of its path. Pure.
///
/// Slashes, control and formatting characters, and leading dots and blanks are removed. A name of more than 120 bytes
/// of UTF-8 keeps its end, with the suffix. "Zolt-update" if nothing remains.
QString packageFileName(const QUrl& url);

}  // namespace zolt

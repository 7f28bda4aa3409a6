#pragma once

#include <QString>
#include <QUrl>

namespace zolt {

/// A file name for the package at `url`, after the last part of its path. Pure.
///
/// Without slashes, control and formatting characters, and leading dots and blanks; at most 120 bytes of UTF-8, of
/// which the end, with the suffix, is kept. "Zolt-update" when nothing remains.
QString packageFileName(const QUrl& url);

}  // namespace zolt

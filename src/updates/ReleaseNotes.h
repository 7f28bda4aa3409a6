#pragma once

#include <QByteArray>
#include <QString>

namespace zolt {

/// What is new in a version.
struct ReleaseNotes {
  enum class Format { Plain, Html };

  Format format = Format::Plain;
  QString text;
};

/// Release notes from a server: plain text if `contentType` says so, otherwise HTML. The character set is that of
/// `contentType`, or that declared in the HTML, or UTF-8. Pure.
ReleaseNotes releaseNotesOf(const QByteArray& content, const QString& contentType);

/// `html` reduced to headings, paragraphs, lists, emphasis, code and links to http and https pages. Pure.
///
/// Removes everything that would be loaded or executed, and all styling. The result is well-formed and of limited
/// depth, whatever the input.
QString inertHtml(const QString& html);

}  // namespace zolt

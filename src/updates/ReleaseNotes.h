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

/// Fetched notes of a media type: plain text where the type says so, else HTML. Decoded as the type's character set
/// says, HTML also as it says itself, else as UTF-8. Pure.
ReleaseNotes releaseNotesOf(const QByteArray& content, const QString& contentType);

/// `html` reduced to headings, paragraphs, lists, emphasis, code and links to http and https pages. Pure.
///
/// Nothing that is loaded, drawn over, run or styled remains, nesting is bounded, and what comes out is well-formed,
/// whatever goes in.
QString inertHtml(const QString& html);

}  // namespace zolt

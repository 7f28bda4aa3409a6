#include "updates/ReleaseNotes.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace zolt {

ReleaseNotes releaseNotesOf(const QByteArray& content, const QString& contentType) {
  const QString type = contentType.section(u';', 0, 0).trimmed().toLower();
  const bool isPlain = type == QLatin1String("text/plain");
  static const QRegularExpression charset(QStringLiteral("charset\\s*=\\s*\"?([A-Za-z0-9_.:-]+)"),
                                          QRegularExpression::CaseInsensitiveOption);
  QStringDecoder decoder(charset.match(contentType).captured(1).toLatin1().constData());
  if (!decoder.isValid()) {
    decoder = isPlain ? QStringDecoder(QStringDecoder::Utf8) : QStringDecoder::decoderForHtml(content);
  }
  if (!decoder.isValid()) decoder = QStringDecoder(QStringDecoder::Utf8);
  return {.format = isPlain ? ReleaseNotes::Format::Plain : ReleaseNotes::Format::Html, .text = decoder(content)};
}

}  // namespace zolt

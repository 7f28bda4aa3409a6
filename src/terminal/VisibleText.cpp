#include "terminal/VisibleText.h"

#include <QChar>
#include <QString>

#include "text/Utf8Decoder.h"
#include "vt/input/InputText.h"

namespace zolt {

namespace {

constexpr char32_t kPictures = U'\u2400';
constexpr char32_t kPictureOfDelete = U'\u2421';
constexpr char32_t kZeroWidthNonJoiner = U'\u200C';
constexpr char32_t kZeroWidthJoiner = U'\u200D';

}  // namespace

bool isInvisible(char32_t scalar) {
  if (vt::isControl(scalar)) return true;
  if (scalar == kZeroWidthNonJoiner || scalar == kZeroWidthJoiner) return false;
  const QChar::Category category = QChar::category(scalar);
  return category == QChar::Other_Format || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

void appendVisible(std::string& out, char32_t scalar) {
  if (scalar < 0x20) {
    appendUtf8(out, kPictures + scalar);
  } else if (scalar == 0x7F) {
    appendUtf8(out, kPictureOfDelete);
  } else if (isInvisible(scalar)) {
    out += QStringLiteral("<U+%1>").arg(static_cast<uint>(scalar), 4, 16, QLatin1Char('0')).toUpper().toStdString();
  } else {
    appendUtf8(out, scalar);
  }
}

std::string visibleText(std::string_view text) {
  std::string visible;
  forEachScalar(text, [&](char32_t scalar) { appendVisible(visible, scalar); });
  return visible;
}

}  // namespace zolt

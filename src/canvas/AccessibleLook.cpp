#include "canvas/AccessibleLook.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace zolt {

namespace {

// By LineStyle.
struct LineNames {
  const char* style;
  const char* type;
};
constexpr std::array kUnderlines{
    LineNames{.style = "none", .type = "none"},     LineNames{.style = "solid", .type = "single"},
    LineNames{.style = "solid", .type = "double"},  LineNames{.style = "wave", .type = "single"},
    LineNames{.style = "dotted", .type = "single"}, LineNames{.style = "dash", .type = "single"}};

QString pair(const char* name, const QString& value) {
  return QLatin1String(name) + QLatin1Char(':') + value + QLatin1Char(';');
}

QString pair(const char* name, const char* value) {
  return pair(name, QString::fromLatin1(value));
}

QString pair(const char* name, QRgb color) {
  return pair(name, QStringLiteral("rgb(%1,%2,%3)").arg(qRed(color)).arg(qGreen(color)).arg(qBlue(color)));
}

}  // namespace

LookRun lookRunAt(const RowContent& row, CanvasColumn column, const CellLook& plain) {
  const auto after = std::ranges::upper_bound(row.pieces, column, {}, &TextPiece::column);
  if (after == row.pieces.begin() || (after - 1)->range().end <= column) {
    const CanvasColumn begin = after == row.pieces.begin() ? CanvasColumn() : (after - 1)->range().end;
    return {.look = plain, .columns = {.begin = begin, .end = after == row.pieces.end() ? row.end : after->column}};
  }
  auto first = after - 1;
  auto last = first;
  const auto joins = [](const TextPiece& one, const TextPiece& next) {
    return one.range().end == next.column && one.look == next.look;
  };
  while (first != row.pieces.begin() && joins(*std::prev(first), *first)) {
    --first;
  }
  while (std::next(last) != row.pieces.end() && joins(*last, *std::next(last))) {
    ++last;
  }
  return {.look = first->look, .columns = {.begin = first->column, .end = last->range().end}};
}

QString accessibleAttributes(const CellLook& look, const CanvasColors& colors) {
  QString attributes = pair("color", look.foreground) +
                       pair("background-color", qAlpha(look.background) == 0 ? colors.background : look.background);
  if (look.weight == FontWeight::Bold) attributes += pair("font-weight", "bold");
  if (look.slant == FontSlant::Italic) attributes += pair("font-style", "italic");
  if (look.underline != LineStyle::None) {
    const LineNames names = kUnderlines[static_cast<std::size_t>(look.underline)];
    attributes += pair("text-underline-style", names.style) + pair("text-underline-type", names.type);
    const bool isColored = qAlpha(look.underlineColor) != 0 && look.underlineColor != look.foreground;
    if (isColored) attributes += pair("text-underline-color", look.underlineColor);
  }
  if (look.struck) attributes += pair("text-line-through-style", "solid") + pair("text-line-through-type", "single");
  return attributes;
}

}  // namespace zolt

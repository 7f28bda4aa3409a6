#include "brew/views/BrewPackageRow.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QIcon>
#include <QPixmapCache>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "controls/ControlColors.h"
#include "controls/TextScale.h"
#include "symbols/Symbol.h"

namespace zolt {

namespace {

constexpr int kVerticalPadding = 2;
constexpr int kMargin = 13;
constexpr int kIconSize = 18;
constexpr int kSpacing = 8;
constexpr double kCaptionScale = 0.85;
// The largest part of a row that a version may take: the name matters more.
constexpr double kVersionShare = 0.4;

constexpr QColor kCaskColor(0x34, 0xA8, 0x53);
constexpr QColor kFormulaColor(0x3B, 0x82, 0xF6);

// Cached by symbol, colour and pixel ratio: a list may have thousands of rows.
QPixmap iconOf(BrewPackageType type, int size, double ratio, bool selected, const QColor& text) {
  const bool cask = type == BrewPackageType::Cask;
  const QString name = cask ? QStringLiteral("app") : QStringLiteral("cube");
  const QColor color = selected ? text : cask ? kCaskColor : kFormulaColor;
  const QString key = QStringLiteral("brew-row %1 %2 %3 %4").arg(name).arg(color.rgba()).arg(size).arg(ratio);
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = symbol(name, color).pixmap(QSize(size, size), ratio);
    QPixmapCache::insert(key, pixmap);
  }
  return pixmap;
}

QFont nameFont(const QFont& body) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(body.pointSizeF() > 0 ? body.pointSizeF() : font.pointSizeF());
  return font;
}

QFont captionFont(const QFont& body) {
  QFont font = body;
  if (body.pointSizeF() > 0) font.setPointSizeF(body.pointSizeF() * kCaptionScale);
  return font;
}

// It grows with the text, but does not make a row higher than its lines.
int iconSize(const QFont& body) {
  return std::max(kIconSize, std::min(scaledToText(kIconSize, body), QFontMetrics(nameFont(body)).height()));
}

// Centred on both lines; beside a name alone, centred on its capital letters, wherever the font places them in the
// line.
int iconTop(const QRect& room, int size, const QFont& body, bool hasDescription) {
  const int middle = room.top() + (room.height() - size) / 2;
  if (hasDescription) return middle;
  const QFontMetrics metrics(nameFont(body));
  const int baseline = room.top() + (room.height() - metrics.height()) / 2 + metrics.ascent();
  const int letters = static_cast<int>(std::lround(baseline - (metrics.capHeight() + size) / 2.0));
  return std::clamp(letters, room.top(), room.top() + room.height() - size);
}

// More than any row shows. A text may have any length, and measuring all of it would be slow.
constexpr qsizetype kLongestShown = 1000;

// Not clipped: the width fits, and some fonts draw a pixel below their own descent.
void drawElided(QPainter& painter, const QRect& rect, Qt::Alignment edge, const QFont& font, const QString& whole) {
  const QString text = whole.left(kLongestShown);
  painter.setFont(font);
  painter.drawText(rect, static_cast<int>(edge | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip,
                   QFontMetrics(font).elidedText(text, Qt::ElideRight, rect.width()));
}

}  // namespace

int BrewPackageRow::height(const QFont& font, bool hasDescription) {
  const int name = QFontMetrics(nameFont(font)).height();
  const int caption = hasDescription ? QFontMetrics(captionFont(font)).height() : 0;
  return std::max(name + caption, kIconSize) + 2 * kVerticalPadding + 2;
}

void BrewPackageRow::paint(QPainter& painter, const QRect& rect, const QFont& font, const QPalette& palette,
                           bool selected) const {
  const ControlColors colors(palette);
  const QColor text = selected ? palette.color(QPalette::HighlightedText) : colors.text;
  const QColor secondary = selected ? text : colors.secondary;
  QRect room = rect.adjusted(kMargin, kVerticalPadding, -kMargin, -kVerticalPadding);

  const int size = iconSize(font);
  const QRect iconRect(room.left(), iconTop(room, size, font, package.description.has_value()), size, size);
  painter.drawPixmap(iconRect, iconOf(type, size, painter.device()->devicePixelRatioF(), selected, text));
  room.setLeft(iconRect.right() + kSpacing);

  const QFont caption = captionFont(font);
  if (package.installedVersion) {
    const QFontMetrics metrics(caption);
    const int wanted = metrics.horizontalAdvance(package.installedVersion->left(kLongestShown)) + 1;
    const int width = std::min(wanted, static_cast<int>(room.width() * kVersionShare));
    const QRect versionRect(room.right() - width + 1, room.top(), width, room.height());
    painter.setPen(secondary);
    drawElided(painter, versionRect, Qt::AlignRight, caption, *package.installedVersion);
    room.setRight(versionRect.left() - kSpacing);
  }

  QRect nameRect = room;
  if (package.description) {
    const int nameHeight = QFontMetrics(nameFont(font)).height();
    const int captionHeight = QFontMetrics(caption).height();
    nameRect = QRect(room.left(), room.center().y() - (nameHeight + captionHeight) / 2 + 1, room.width(), nameHeight);
    painter.setPen(secondary);
    drawElided(painter, QRect(room.left(), nameRect.bottom() + 1, room.width(), captionHeight), Qt::AlignLeft, caption,
               *package.description);
  }
  painter.setPen(text);
  drawElided(painter, nameRect, Qt::AlignLeft, nameFont(font), package.name);
}

QString BrewPackageRow::spokenText() const {
  QStringList parts{package.name};
  if (package.description && !package.description->isEmpty()) parts << *package.description;
  if (package.installedVersion) parts << *package.installedVersion;
  return parts.join(QStringLiteral(", "));
}

}  // namespace zolt

#include "brew/views/BrewPackageRow.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QIcon>
#include <QStringList>
#include <algorithm>

#include "settings/views/FormColors.h"
#include "symbols/Symbol.h"

namespace zolt {

namespace {

constexpr int kVerticalPadding = 2;
constexpr int kMargin = 10;
constexpr int kIconSize = 18;
constexpr int kSpacing = 8;
constexpr double kCaptionScale = 0.85;
// Less than that a name is never cut to, however long the version.
constexpr int kLeastNameWidth = 60;

struct Icon {
  const char* symbol;
  QColor color;
};

Icon iconOf(BrewPackageType type) {
  if (type == BrewPackageType::Cask) return {.symbol = "app", .color = QColor(0x34, 0xA8, 0x53)};
  return {.symbol = "cube", .color = QColor(0x3B, 0x82, 0xF6)};
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

void drawElided(QPainter& painter, const QRect& rect, const QFont& font, const QString& text) {
  painter.setFont(font);
  painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
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
  const FormColors colors(palette);
  const QColor text = selected ? palette.color(QPalette::HighlightedText) : colors.text;
  const QColor secondary = selected ? text : colors.secondary;
  QRect room = rect.adjusted(kMargin, kVerticalPadding, -kMargin, -kVerticalPadding);

  const Icon icon = iconOf(type);
  const QRect iconRect(room.left(), room.center().y() - kIconSize / 2, kIconSize, kIconSize);
  symbol(QLatin1String(icon.symbol), selected ? text : icon.color).paint(&painter, iconRect);
  room.setLeft(iconRect.right() + kSpacing);

  const QFont caption = captionFont(font);
  if (package.installedVersion) {
    const QFontMetrics metrics(caption);
    const int wanted = metrics.horizontalAdvance(*package.installedVersion) + 1;
    const int width = std::min(wanted, std::max(room.width() - kLeastNameWidth - kSpacing, 0));
    const QRect versionRect(room.right() - width + 1, room.top(), width, room.height());
    painter.setPen(secondary);
    drawElided(painter, versionRect, caption, *package.installedVersion);
    room.setRight(versionRect.left() - kSpacing);
  }

  QRect nameRect = room;
  if (package.description) {
    const int nameHeight = QFontMetrics(nameFont(font)).height();
    const int captionHeight = QFontMetrics(caption).height();
    nameRect = QRect(room.left(), room.center().y() - (nameHeight + captionHeight) / 2 + 1, room.width(), nameHeight);
    painter.setPen(secondary);
    drawElided(painter, QRect(room.left(), nameRect.bottom() + 1, room.width(), captionHeight), caption,
               *package.description);
  }
  painter.setPen(text);
  drawElided(painter, nameRect, nameFont(font), package.name);
}

QString BrewPackageRow::spokenText() const {
  QStringList parts{package.name};
  if (package.description && !package.description->isEmpty()) parts << *package.description;
  if (package.installedVersion) parts << *package.installedVersion;
  return parts.join(QStringLiteral(", "));
}

}  // namespace zolt

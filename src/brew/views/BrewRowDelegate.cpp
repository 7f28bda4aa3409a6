#include "brew/views/BrewRowDelegate.h"

#include <QPainter>

#include "brew/views/BrewListModel.h"
#include "brew/views/BrewPackageRow.h"
#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr int kHeaderMargin = 13;
constexpr int kHeaderSpace = 10;
constexpr int kSelectionInset = 4;
constexpr int kSelectionRadius = 5;

QFont headerFont(QFont font) {
  if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * 0.85);
  font.setWeight(QFont::DemiBold);
  return font;
}

const BrewListModel& modelOf(const QModelIndex& index) {
  return static_cast<const BrewListModel&>(*index.model());
}

}  // namespace

void BrewRowDelegate::measure(const QFont& font) const {
  if (m_headerHeight > 0 && font == m_measured) return;
  m_measured = font;
  m_headerHeight = QFontMetrics(headerFont(font)).height() + kHeaderSpace;
  m_shortHeight = BrewPackageRow::height(font, false);
  m_tallHeight = BrewPackageRow::height(font, true);
}

QSize BrewRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  measure(option.font);
  const BrewPackage* package = modelOf(index).packageAt(index.row());
  if (package == nullptr) return {0, m_headerHeight};
  return {0, package->description ? m_tallHeight : m_shortHeight};
}

void BrewRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const BrewListModel& model = modelOf(index);
  const BrewPackage* package = model.packageAt(index.row());
  painter->save();
  if (package == nullptr) {
    painter->setFont(headerFont(option.font));
    // A header is not selectable, but must not be greyed out.
    QPalette palette = option.palette;
    palette.setCurrentColorGroup(QPalette::Active);
    painter->setPen(ControlColors(palette).secondary);
    painter->drawText(option.rect.adjusted(kHeaderMargin, kHeaderSpace / 2, -kHeaderMargin, 0),
                      Qt::AlignLeft | Qt::AlignVCenter, model.headerAt(index.row()));
  } else {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (selected) {
      painter->setRenderHint(QPainter::Antialiasing);
      painter->setPen(Qt::NoPen);
      painter->setBrush(option.palette.color(QPalette::Highlight));
      painter->drawRoundedRect(option.rect.adjusted(kSelectionInset, 0, -kSelectionInset, 0), kSelectionRadius,
                               kSelectionRadius);
    }
    if (!selected && option.state.testFlag(QStyle::State_HasFocus)) {
      painter->setRenderHint(QPainter::Antialiasing);
      painter->setPen(option.palette.color(QPalette::Highlight));
      painter->setBrush(Qt::NoBrush);
      painter->drawRoundedRect(QRectF(option.rect).adjusted(kSelectionInset + 0.5, 0.5, -kSelectionInset - 0.5, -0.5),
                               kSelectionRadius, kSelectionRadius);
    }
    BrewPackageRow{.package = *package, .type = model.typeAt(index.row())}.paint(*painter, option.rect, option.font,
                                                                                 option.palette, selected);
  }
  painter->restore();
}

}  // namespace zolt

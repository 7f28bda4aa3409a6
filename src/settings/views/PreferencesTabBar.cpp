#include "settings/views/PreferencesTabBar.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QPainter>
#include <algorithm>

#include "controls/ButtonAccessible.h"
#include "controls/ControlColors.h"
#include "controls/Hairline.h"
#include "controls/OneTabStop.h"
#include "controls/TextScale.h"
#include "symbols/Symbol.h"

namespace zolt {

namespace {

constexpr int kSymbolSize = 24;
constexpr int kSymbolGap = 3;
constexpr int kAboveAndBelow = 6;
constexpr int kBeside = 10;
constexpr int kNarrowest = 88;
constexpr int kRadius = 8;
constexpr int kTabGap = 2;
constexpr int kBarPadding = 6;
constexpr double kSelectedShare = 0.16;  // of the accent, behind the selected tab
constexpr double kHoveredShare = 0.06;   // of the text colour, behind the tab under the mouse

}  // namespace

TabButton::TabButton(const QString& label, const QString& symbolName, QWidget* parent)
    : QAbstractButton(parent), m_symbolName(symbolName) {
  ButtonAccessible::setRole(staticMetaObject, QAccessible::PageTab);
  setText(label);
  setObjectName(label);
  setCheckable(true);
  setFocusPolicy(Qt::ClickFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TabButton::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const QSize content(metrics.horizontalAdvance(text()),
                      scaledToText(kSymbolSize, font()) + kSymbolGap + metrics.height());
  const QSize padded = content + 2 * (QSize(kBeside, kAboveAndBelow) + QSize(1, 1) * KeyboardFocus::margin);
  return {std::max(padded.width(), kNarrowest), padded.height()};
}

void TabButton::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr int kMargin = KeyboardFocus::margin;
  const QRectF shape = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
  if (isChecked() || underMouse()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? mixed(colors.window, colors.accent, kSelectedShare)
                                 : mixed(colors.window, colors.text, kHoveredShare));
    painter.drawRoundedRect(shape, kRadius, kRadius);
  }
  const QColor color = isChecked() ? colors.accentText : colors.secondary;
  const int size = scaledToText(kSymbolSize, font());
  const QRect image((width() - size) / 2, kMargin + kAboveAndBelow, size, size);
  symbol(m_symbolName, color).paint(&painter, image);
  painter.setPen(color);
  const QRect label(0, image.bottom() + 1 + kSymbolGap, width(), fontMetrics().height());
  painter.drawText(label, Qt::AlignCenter, text());
  m_focus.drawRing(painter, shape, kRadius);
}

PreferencesTabBar::PreferencesTabBar(QWidget* parent) : QWidget(parent) {
  ButtonAccessible::setRole(staticMetaObject, QAccessible::PageTabList);
  keepOneTabStop(m_group);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, kBarPadding, 0, kBarPadding);
  row->setSpacing(kTabGap);
  row->addStretch(1);
  row->addStretch(1);
  setAccessibleName(tr("Preferences"));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  connect(&m_group, &QButtonGroup::idClicked, this, &PreferencesTabBar::selected);
}

TabButton* PreferencesTabBar::addTab(const QString& label, const QString& symbolName, const QKeySequence& shortcut) {
  auto* tab = new TabButton(label, symbolName, this);
  tab->setShortcut(shortcut);
  auto* row = static_cast<QHBoxLayout*>(layout());
  row->insertWidget(row->count() - 1, tab);
  m_group.addButton(tab, count());
  return tab;
}

void PreferencesTabBar::setCurrentIndex(int index) {
  QAbstractButton* tab = m_group.button(index);
  if (tab == nullptr) return;
  const QAbstractButton* before = m_group.checkedButton();
  const bool hadFocus = before != nullptr && before->hasFocus();
  tab->setChecked(true);
  // The focus moves along with the selection.
  if (hadFocus) tab->setFocus(Qt::OtherFocusReason);
}

void PreferencesTabBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawHairline(painter, QRect(0, height() - 1, width(), 1), ControlColors(palette()).hairline);
}

}  // namespace zolt

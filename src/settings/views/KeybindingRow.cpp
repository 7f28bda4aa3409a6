#include "settings/views/KeybindingRow.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPainter>

#include "controls/ControlColors.h"

namespace zolt {

namespace {

constexpr int kBeside = 8;
constexpr int kAboveAndBelow = 2;
constexpr int kRadius = 4;
constexpr float kFaint = 0.1F;

}  // namespace

ShortcutText::ShortcutText(const QString& shortcut, QWidget* parent) : SecondaryLabel(shortcut, parent) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font().pointSizeF());
  setFont(fixed);
  setAlignment(Qt::AlignCenter);
  setContentsMargins(kBeside, kAboveAndBelow, kBeside, kAboveAndBelow);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ShortcutText::paintEvent(QPaintEvent* event) {
  {
    QColor background = ControlColors(palette()).secondary;
    background.setAlphaF(kFaint);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    painter.drawRoundedRect(rect(), kRadius, kRadius);
  }
  SecondaryLabel::paintEvent(event);
}

KeybindingRow::KeybindingRow(const QString& action, const QString& shortcut, QWidget* parent)
    : QWidget(parent), m_action(action), m_shortcut(shortcut) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new QLabel(action, this));
  row->addStretch(1);
  row->addWidget(new ShortcutText(shortcut, this));
  setAccessibleName(action);
  setAccessibleDescription(shortcut);
}

}  // namespace zolt

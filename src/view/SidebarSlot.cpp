#include "view/SidebarSlot.h"

#include <QEvent>
#include <QStyle>
#include <utility>

#include "controls/TextScale.h"

namespace zolt {

namespace {

constexpr int kFullWidth = 250;
constexpr int kDurationMs = 250;

}  // namespace

SidebarSlot::SidebarSlot(MakeContent makeContent, QWidget* parent)
    : QWidget(parent), m_makeContent(std::move(makeContent)) {
  setFixedWidth(0);
  hide();
  m_animation.setEasingCurve(QEasingCurve::InOutQuad);
  connect(&m_animation, &QVariantAnimation::valueChanged, this,
          [this](const QVariant& width) { setFixedWidth(width.toInt()); });
  connect(&m_animation, &QVariantAnimation::finished, this, &SidebarSlot::finishMove);
}

int SidebarSlot::fullWidth() const {
  return scaledToText(kFullWidth, font());
}

void SidebarSlot::setRevealed(bool revealed) {
  if (m_revealed == revealed) return;
  m_revealed = revealed;
  Q_EMIT aboutToMove();
  if (revealed) {
    // Always a new one, even while the old is still sliding out.
    delete std::exchange(m_content, nullptr);
    m_content = m_makeContent(this);
    m_content->setFixedWidth(fullWidth());
    m_content->setGeometry(width() - fullWidth(), 0, fullWidth(), height());
    m_content->show();
  }
  show();
  // Toggling during the animation reverses it from its current position.
  m_animation.stop();
  m_animation.setStartValue(width());
  m_animation.setEndValue(revealed ? fullWidth() : 0);
  const bool wanted = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
  m_animation.setDuration(wanted && window()->isVisible() ? kDurationMs : 0);
  m_animation.start();
}

void SidebarSlot::finishMove() {
  if (!m_revealed) {
    delete std::exchange(m_content, nullptr);
    hide();
  }
  Q_EMIT atRest();
}

void SidebarSlot::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (m_content != nullptr) m_content->setGeometry(width() - fullWidth(), 0, fullWidth(), height());
}

void SidebarSlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange || m_content == nullptr) return;
  m_content->setFixedWidth(fullWidth());
  if (m_revealed && !isMoving()) setFixedWidth(fullWidth());
}

}  // namespace zolt

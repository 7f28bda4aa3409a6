#include "settings/views/GroupedForm.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "controls/Card.h"
#include "controls/KeyboardFocus.h"
#include "controls/SecondaryLabel.h"
#include "controls/TextScale.h"
#include "controls/ThinScrollBar.h"

namespace zolt {

namespace {

constexpr int kPadding = 20;  // around the column
constexpr int kSectionGap = 18;
constexpr int kTitleGap = 6;
constexpr int kInset = Card::inset;
constexpr int kRowHeight = 38;
constexpr int kRowGap = 12;  // between a label and its control
constexpr int kAboveAndBelowText = 10;
constexpr int kNarrowestControl = 200;
constexpr int kWidestControl = 330;
constexpr double kTitleSize = 0.92;  // of the general text size
constexpr int kViewMargin = 14;      // kept around a control that is scrolled into view

QWidget* makeRow(QHBoxLayout*& layout) {
  auto* row = new QWidget;
  layout = new QHBoxLayout(row);
  // A control includes the margin for its focus ring; its visible part ends at the inset.
  layout->setContentsMargins(kInset, 0, kInset - KeyboardFocus::margin, 0);
  layout->setSpacing(kRowGap);
  return row;
}

}  // namespace

GroupedForm::GroupedForm(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  // Always shown, so that every form has the same grid whether it scrolls or not.
  setVerticalScrollBar(new ThinScrollBar(ThinScrollBar::Ground::Window, this));
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  auto* content = new QWidget;
  m_column = new QVBoxLayout(content);
  m_column->setContentsMargins(kPadding, kPadding - 4, kPadding - ThinScrollBar::breadth, kPadding);
  m_column->setSpacing(0);
  m_column->addStretch(1);
  setWidget(content);
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
}

void GroupedForm::addSection(const QString& title) {
  const auto insert = [this](QWidget* widget) { m_column->insertWidget(m_column->count() - 1, widget); };
  if (m_card != nullptr) m_column->insertSpacing(m_column->count() - 1, kSectionGap);
  if (!title.isEmpty()) {
    auto* heading = new SecondaryLabel(title);
    QFont small = heading->font();
    small.setPointSizeF(small.pointSizeF() * kTitleSize);
    small.setWeight(QFont::DemiBold);
    heading->setFont(small);
    heading->setContentsMargins(kInset, 0, kInset, kTitleGap);
    insert(heading);
  }
  m_card = new Card;
  insert(m_card);
}

QLabel* GroupedForm::addRow(const QString& label, QWidget* control) {
  QHBoxLayout* layout = nullptr;
  QWidget* row = makeRow(layout);
  auto* name = new QLabel(label);
  name->setTextFormat(Qt::PlainText);
  name->setBuddy(control);
  name->setEnabled(control->isEnabled());
  QWidget* handle = control->focusProxy() == nullptr ? control : control->focusProxy();
  handle->setAccessibleName(label);
  const bool stretches = control->sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
  if (stretches) {
    control->setMinimumWidth(scaledToText(kNarrowestControl, font()));
    control->setMaximumWidth(scaledToText(kWidestControl, font()));
  }
  layout->addWidget(name);
  layout->addStretch(1);
  layout->addWidget(control, stretches ? 1000 : 0);
  row->setMinimumHeight(std::max(kRowHeight, fontMetrics().height() + 2 * kAboveAndBelowText));
  add(row);
  return name;
}

void GroupedForm::addWideRow(QWidget* content) {
  QHBoxLayout* layout = nullptr;
  QWidget* row = makeRow(layout);
  layout->setContentsMargins(kInset, kRowGap, kInset, kRowGap);
  layout->addWidget(content);
  add(row);
}

void GroupedForm::addLeadingRow(QWidget* content) {
  QHBoxLayout* layout = nullptr;
  QWidget* row = makeRow(layout);
  layout->setContentsMargins(kInset - KeyboardFocus::margin, 0, kInset, 0);
  layout->addWidget(content);
  layout->addStretch(1);
  row->setMinimumHeight(content->sizeHint().height() + kRowGap);
  add(row);
}

void GroupedForm::add(QWidget* row) {
  m_card->add(row);
  for (QWidget* each : row->findChildren<QWidget*>()) {
    if (each->focusPolicy() != Qt::NoFocus) each->installEventFilter(this);
  }
}

void GroupedForm::clear() {
  while (m_column->count() > 1) {
    const std::unique_ptr<QLayoutItem> item(m_column->takeAt(0));
    delete item->widget();
  }
  m_card = nullptr;
}

bool GroupedForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn && isKeyboardReason(static_cast<QFocusEvent*>(event)->reason())) {
    ensureWidgetVisible(static_cast<QWidget*>(watched), 0, kViewMargin);
  }
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace zolt

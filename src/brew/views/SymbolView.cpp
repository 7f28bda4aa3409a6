#include "brew/views/SymbolView.h"

#include <QPainter>
#include <utility>

#include "symbols/Symbol.h"

namespace zolt {

SymbolView::SymbolView(QString name, int size, const QColor& color, QWidget* parent)
    : QWidget(parent), m_name(std::move(name)), m_color(color) {
  setFixedSize(size, size);
}

void SymbolView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  symbol(m_name, m_color.isValid() ? m_color : palette().color(QPalette::PlaceholderText)).paint(&painter, rect());
}

}  // namespace zolt

#pragma once

#include <QApplication>
#include <QFont>

namespace zolt::test {

/// Text of the application `factor` times as large, as long as this exists.
class TextSize {
 public:
  explicit TextSize(double factor) {
    QFont font = m_before;
    font.setPointSizeF(font.pointSizeF() * factor);
    QApplication::setFont(font);
  }
  ~TextSize() { QApplication::setFont(m_before); }
  TextSize(const TextSize&) = delete;
  TextSize& operator=(const TextSize&) = delete;

 private:
  QFont m_before = QApplication::font();
};

}  // namespace zolt::test

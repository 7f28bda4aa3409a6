#pragma once

#include <QColor>
#include <QPalette>

namespace zolt::test {

/// The palette of applications on a dark desktop.
inline QPalette darkPalette() {
  const QColor text(0xEE, 0xEE, 0xEE);
  QPalette palette(QColor(0x3A, 0x3A, 0x3A), QColor(0x2B, 0x2B, 0x2B));
  palette.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
  palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x26, 0x26));
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
  }
  palette.setColor(QPalette::PlaceholderText, QColor(0xEE, 0xEE, 0xEE, 0x80));
  palette.setColor(QPalette::Highlight, QColor(0x3D, 0x8F, 0xE0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace zolt::test

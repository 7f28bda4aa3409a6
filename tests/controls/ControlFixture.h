#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <algorithm>

#include "controls/ControlColors.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// A mouse click where the user's would go: at a place of the window, whatever is there.
inline void clickAt(QWidget& widget, QPoint place) {
  QWidget* window = widget.window();
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, widget.mapTo(window, place));
}
inline void click(QWidget& widget) {
  clickAt(widget, widget.rect().center());
}

/// A key where the user's would go: to the widget that has the focus.
inline void press(QWidget& window, int key, Qt::KeyboardModifiers modifiers = {}) {
  QTest::keyClick(window.windowHandle(), static_cast<Qt::Key>(key), modifiers);
}

inline void shown(QWidget& widget) {
  widget.show();
  widget.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
}

/// What a screen reader does to a button.
inline void act(QAbstractButton& button, const QString& action) {
  QAccessible::queryAccessibleInterface(&button)->actionInterface()->doAction(action);
}

/// The highest contrast with `background` of any pixel: that of a text's colour, where the picture shows a text.
inline double strongestContrast(const QImage& image, const QColor& background) {
  double strongest = 1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      strongest = std::max(strongest, contrastRatio(image.pixelColor(x, y), background));
    }
  }
  return strongest;
}

}  // namespace zolt::test

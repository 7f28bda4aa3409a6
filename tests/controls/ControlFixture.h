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

/// A mouse click at a position in the window, delivered to whatever is there, as a user's would be.
inline void clickAt(QWidget& widget, QPoint place) {
  QWidget* window = widget.window();
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, widget.mapTo(window, place));
}
inline void click(QWidget& widget) {
  clickAt(widget, widget.rect().center());
}

/// A key press, delivered to the widget with the focus, as a user's would be.
inline void press(QWidget& window, int key, Qt::KeyboardModifiers modifiers = {}) {
  QTest::keyClick(window.windowHandle(), static_cast<Qt::Key>(key), modifiers);
}

inline void shown(QWidget& widget) {
  widget.show();
  widget.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
}

/// The action of a screen reader on a button.
inline void act(QAbstractButton& button, const QString& action) {
  QAccessible::queryAccessibleInterface(&button)->actionInterface()->doAction(action);
}

/// The highest contrast of any pixel with `background`; in a picture of text, the contrast of the text colour.
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

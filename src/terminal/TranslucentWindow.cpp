#include "terminal/TranslucentWindow.h"

namespace zolt {

namespace {

// QWidget::destroy is for derived classes, but it does not matter which.
struct AnyWidget : QWidget {
  using QWidget::destroy;
};

}  // namespace

void makeTranslucent(QWidget& window) {
  if (window.testAttribute(Qt::WA_TranslucentBackground)) return;
  window.setAttribute(Qt::WA_TranslucentBackground);
  if (window.windowHandle() == nullptr) return;
  // The system window that exists has none, nor has its backing store: only new ones have.
  const bool wasVisible = window.isVisible();
  const bool wasActive = window.isActiveWindow();
  window.hide();
  (window.*&AnyWidget::destroy)(true, true);
  if (wasVisible) window.show();
  if (wasActive) window.activateWindow();
}

}  // namespace zolt

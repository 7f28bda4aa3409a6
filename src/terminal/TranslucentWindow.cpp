#include "terminal/TranslucentWindow.h"

namespace zolt {

void makeTranslucent(QWidget& window) {
  if (window.testAttribute(Qt::WA_TranslucentBackground)) return;
  window.setAttribute(Qt::WA_TranslucentBackground);
  if (window.windowHandle() == nullptr) return;
  // The system window that exists has none: only a new one has.
  const bool wasVisible = window.isVisible();
  window.setParent(window.parentWidget(), window.windowFlags());
  if (wasVisible) window.show();
}

}  // namespace zolt

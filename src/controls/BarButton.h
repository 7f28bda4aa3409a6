#pragma once

#include <QAbstractButton>
#include <QString>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// A small flat button of a tool bar: a symbol or a few letters. Its background shows hovering, pressing and, if it is
/// checkable, the checked state.
class BarButton : public QAbstractButton {
  Q_OBJECT

 public:
  /// Shows the symbol `symbolName`, or `letters` if that is empty. `name` is its tooltip and its accessible name.
  BarButton(const QString& symbolName, const QString& letters, const QString& name, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QString m_symbol;
  KeyboardFocus m_focus{*this};
};

}  // namespace zolt

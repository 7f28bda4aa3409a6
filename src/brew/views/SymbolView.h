#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace zolt {

/// A symbol standing by itself, drawn anew for the palette and the pixel ratio of the moment. Main thread.
class SymbolView : public QWidget {
  Q_OBJECT

 public:
  /// `size`: the side of its square, in logical pixels. Without a colour it is as faint as a placeholder's text.
  SymbolView(QString name, int size, const QColor& color, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_name;
  QColor m_color;
};

}  // namespace zolt

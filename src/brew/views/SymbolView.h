#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace zolt {

/// A symbol on its own, which follows the palette and the pixel ratio. Main thread.
class SymbolView : public QWidget {
  Q_OBJECT

 public:
  /// `size` is in logical pixels, for both sides. Without a colour it has the palette's placeholder colour.
  SymbolView(QString name, int size, const QColor& color, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_name;
  QColor m_color;
};

}  // namespace zolt

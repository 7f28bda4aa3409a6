#pragma once

#include <QColor>
#include <QScrollBar>
#include <QTimer>
#include <vector>

namespace zolt {

/// A stretch of what is scrolled, as fractions of its height: 0 is the top, 1 the bottom.
struct BarMark {
  double begin = 0;
  double end = 0;
};

/// A vertical scroll bar without buttons or groove: a rounded thumb and, where a text was searched, the matches.
///
/// It always takes its width, so nothing wraps differently when the thumb appears.
class ThinScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  /// What it lies on.
  enum class Ground {
    Window,    ///< its parent's window colour, which shows through; the thumb is visible whenever there is more to see
    Terminal,  ///< black, which it fills itself; the thumb is visible only while the user scrolls or points at it
  };

  /// Its width, in logical pixels.
  static constexpr int breadth = 12;

  ThinScrollBar(Ground ground, QWidget* parent);

  QSize sizeHint() const override;
  /// Shows the thumb for a moment.
  void flash();
  /// Marks these stretches, in order, until told otherwise.
  void setMarks(std::vector<BarMark> marks);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  bool isThumbShown() const;
  QRectF thumb() const;
  QColor thumbColor() const;
  void paintMarks(QPainter& painter) const;

  Ground m_ground;
  std::vector<BarMark> m_marks;
  QTimer m_fade;
};

}  // namespace zolt

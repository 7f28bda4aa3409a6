#pragma once

#include <QColor>
#include <QScrollBar>
#include <QTimer>
#include <vector>

namespace zolt {

/// A range of the scrolled content as fractions of its height: 0 is the top, 1 the bottom.
struct BarMark {
  double begin = 0;
  double end = 0;
};

/// A vertical scroll bar without buttons or groove: a rounded thumb and, during a search, the matches.
///
/// Its width is always reserved, so that nothing rewraps when the thumb appears.
class ThinScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  /// The surface behind it.
  enum class Ground {
    Window,    ///< its parent's window colour, which shows through; the thumb is visible whenever there is something to
               ///< scroll
    Terminal,  ///< the terminal's, which it fills itself; the thumb is visible only while the user scrolls or the pointer is
               ///< near
  };

  /// Its width, in logical pixels.
  static constexpr int breadth = 12;

  ThinScrollBar(Ground ground, QWidget* parent);

  QSize sizeHint() const override;
  /// The colours of the terminal that it stands beside, where the ground is one; white on black at first.
  void setTerminalColors(const QColor& background, const QColor& text);
  /// Shows the thumb briefly.
  void flash();
  /// Marks these ranges, in order, until the next call.
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
  QColor m_background = Qt::black;
  QColor m_text = Qt::white;
  std::vector<BarMark> m_marks;
  QTimer m_fade;
};

}  // namespace zolt

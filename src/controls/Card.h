#pragma once

#include <QWidget>

class QPainter;
class QVBoxLayout;

namespace zolt {

struct ControlColors;

/// Fills `area` with the rounded surface of a card.
void drawCard(QPainter& painter, const QRect& area, const ControlColors& colors, const QColor& border);

/// The rounded background of a section of a form: rows from top to bottom, separated by hairlines.
class Card : public QWidget {
  Q_OBJECT

 public:
  /// The distance from the card's edge to a row's content, in logical pixels.
  static constexpr int inset = 14;

  explicit Card(QWidget* parent = nullptr);

  /// Adds a row at the bottom; the card takes ownership.
  void add(QWidget* row);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* m_rows;
};

}  // namespace zolt

#pragma once

#include <QWidget>

class QPainter;
class QVBoxLayout;

namespace zolt {

struct ControlColors;

/// Fills `area` with the rounded surface of a card.
void drawCard(QPainter& painter, const QRect& area, const ControlColors& colors, const QColor& border);

/// The rounded background of a section of a form: its rows one below the other, with a hairline between them.
class Card : public QWidget {
  Q_OBJECT

 public:
  /// Of a row's content from the card's edge, in logical pixels.
  static constexpr int inset = 14;

  explicit Card(QWidget* parent = nullptr);

  /// Adds a row below the others; the card owns it from now on.
  void add(QWidget* row);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* m_rows;
};

}  // namespace zolt

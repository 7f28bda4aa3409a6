#pragma once

#include <QBoxLayout>
#include <QPushButton>
#include <QWidget>

#include "controls/SecondaryLabel.h"

namespace zolt {

/// A slim bar below a terminal that says what the log display is not, and offers the full emulation. It never takes
/// the keyboard by itself; with the keyboard, Tab goes through its buttons. One row high: in a narrow window the text
/// is elided. Text that is larger than usual takes as many lines as it needs, with the buttons below it; buttons that
/// have no room beside each other stand one below the other. Main thread.
class DisplayBar : public QWidget {
  Q_OBJECT

 public:
  explicit DisplayBar(QWidget* parent = nullptr);

 Q_SIGNALS:
  void fullEmulationChosen();
  void logChosen();

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QPushButton* addButton(const QString& text, const QString& name);
  void fitText();
  void fitButtons();

  SecondaryLabel* m_text;  // a child
  QBoxLayout* m_row;       // the text and the buttons; its own
  QBoxLayout* m_buttons;   // in it
};

}  // namespace zolt

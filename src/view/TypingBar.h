#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace zolt {

/// Says, in a conspicuous colour, that what is typed goes to several terminals, and offers to stop it. Never takes the
/// keyboard by itself. Main thread.
class TypingBar : public QWidget {
  Q_OBJECT

 public:
  explicit TypingBar(QWidget* parent = nullptr);

  /// How many terminals, at least 2.
  void setCount(int terminals);

 Q_SIGNALS:
  void stopWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* m_text;       // a child
  QPushButton* m_stop;  // a child
};

}  // namespace zolt

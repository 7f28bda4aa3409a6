#pragma once

#include <QPushButton>
#include <QWidget>

namespace zolt {

/// A slim bar below a terminal that says what the log display is not, and offers the full emulation. It never takes
/// the keyboard by itself; with the keyboard, Tab goes through its buttons. Always one row high: in a narrow window the
/// text is elided. Main thread.
class DisplayBar : public QWidget {
  Q_OBJECT

 public:
  explicit DisplayBar(QWidget* parent = nullptr);

 Q_SIGNALS:
  void fullEmulationChosen();
  void logChosen();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPushButton* addButton(const QString& text, const QString& name);
};

}  // namespace zolt

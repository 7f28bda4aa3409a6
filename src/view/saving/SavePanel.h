#pragma once

#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

namespace zolt {

/// Lies over the bottom of another widget while its output is being saved and shows the progress and a Cancel button.
/// Escape cancels too while the panel has the focus. It takes neither space nor the focus from the widget below.
class SavePanel : public QWidget {
  Q_OBJECT

 public:
  /// A child of `over`, in which it stays centred. Hidden at first.
  explicit SavePanel(QWidget* over);

  /// From 0 to 1.
  void setProgress(double share);

 Q_SIGNALS:
  void cancelled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void moveToPlace();

  QProgressBar* m_bar;    // a child
  QPushButton* m_cancel;  // a child
};

}  // namespace zolt

#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zolt {

/// The base of the update windows: a bold title, a text, content, and a row of buttons. Not modal; Escape and the close
/// button of the window reject it.
class UpdateWindow : public QDialog {
  Q_OBJECT

 public:
  UpdateWindow(const QString& title, const QString& text, QWidget* parent = nullptr);

  void setTitle(const QString& title) { m_title->setText(title); }
  void setText(const QString& text);
  /// Makes the window appear without taking the keyboard focus, and without a button that Return or Space would press.
  /// Call it before showing the window.
  void appearUnrequested();

 protected:
  /// Between the text and the buttons.
  QVBoxLayout& content() { return *m_content; }
  /// At the left end of the row; the buttons of `addButton` are at the right end, in order.
  QPushButton* addButtonAtStart(const QString& label, const QString& name);
  QPushButton* addButton(const QString& label, const QString& name);
  /// The button that Return presses.
  QPushButton* addDefaultButton(const QString& label, const QString& name);
  /// Call it when everything has been added. The size is that of the content, and fixed unless `resizable`.
  void finish(bool resizable = false);

 private:
  QPushButton* makeButton(const QString& label, const QString& name);

  QVBoxLayout* m_frame;
  QLabel* m_title;
  QLabel* m_text;
  QVBoxLayout* m_content;
  QHBoxLayout* m_buttons;
};

}  // namespace zolt

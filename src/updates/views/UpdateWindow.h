#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zolt {

/// What the windows of updates have in common: a bold title line, a text under it, content, and a row of buttons. Not
/// modal; Escape and the window's own close button reject it.
class UpdateWindow : public QDialog {
  Q_OBJECT

 public:
  UpdateWindow(const QString& title, const QString& text, QWidget* parent = nullptr);

  void setTitle(const QString& title) { m_title->setText(title); }
  void setText(const QString& text);
  /// Before it is shown: it comes without taking the keyboard, and no key presses a button of it until the user has
  /// gone to one.
  void comeUncalled();

 protected:
  /// Between the text and the buttons.
  QVBoxLayout& content() { return *m_content; }
  /// On the left of the row; buttons added by `addButton` stand on its right, in their order.
  QPushButton* addButtonAtStart(const QString& label, const QString& name);
  QPushButton* addButton(const QString& label, const QString& name);
  /// The one that Return presses.
  QPushButton* addDefaultButton(const QString& label, const QString& name);
  /// Call it when all is added: the size is then that of the content, and fixed unless `resizable`.
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

#pragma once

#include <QVariantAnimation>
#include <QWidget>
#include <functional>

namespace zolt {

/// A place at the left edge of a window whose content slides in and out.
///
/// The content exists only while it is shown. It keeps its full width while it slides in or out. Main thread.
class SidebarSlot : public QWidget {
  Q_OBJECT

 public:
  using MakeContent = std::function<QWidget*(QWidget* parent)>;

  explicit SidebarSlot(MakeContent makeContent, QWidget* parent = nullptr);

  /// In logical pixels: 250, or more for large text.
  int fullWidth() const;
  bool isRevealed() const { return m_revealed; }
  /// Null while hidden.
  QWidget* content() const { return m_content; }
  bool isMoving() const { return m_animation.state() == QAbstractAnimation::Running; }
  /// Slides in or out; in one step if the desktop has animations turned off or the slot is not on screen.
  void setRevealed(bool revealed);

 Q_SIGNALS:
  /// Emitted before the first and after the last change of width.
  void aboutToMove();
  void atRest();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void finishMove();

  MakeContent m_makeContent;
  QWidget* m_content = nullptr;  // a child, while shown
  bool m_revealed = false;
  QVariantAnimation m_animation;
};

}  // namespace zolt

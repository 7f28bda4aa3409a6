#pragma once

#include <QScrollArea>
#include <QString>

class QLabel;
class QVBoxLayout;

namespace zolt {

class Card;

/// A scrolling column of sections, each a title over a rounded card of rows. All rows of all sections share one grid:
/// labels at the leading edge; controls at the trailing one, those that stretch in one column of their own.
///
/// A control that the keyboard reaches is scrolled into view.
class GroupedForm : public QScrollArea {
  Q_OBJECT

 public:
  explicit GroupedForm(QWidget* parent = nullptr);

  /// Begins a section, to which the rows that follow belong. An empty title takes no room.
  void addSection(const QString& title);
  /// A row of a label and its control, which the form owns from now on. It must have its state: a control that is
  /// disabled has a label that looks so.
  QLabel* addRow(const QString& label, QWidget* control);
  /// A row of one widget over the whole width.
  void addWideRow(QWidget* content);
  /// A row of one widget at the leading edge.
  void addLeadingRow(QWidget* content);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void add(QWidget* row);

  QVBoxLayout* m_column;
  Card* m_card = nullptr;
};

}  // namespace zolt

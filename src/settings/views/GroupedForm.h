#pragma once

#include <QScrollArea>
#include <QString>

class QLabel;
class QVBoxLayout;

namespace zolt {

class Card;

/// A scrolling column of sections, each a title above a rounded card of rows. All rows share one grid: labels at the
/// leading edge, controls at the trailing edge, and controls that stretch in a column of equal width.
///
/// A control that gets the focus from the keyboard is scrolled into view.
class GroupedForm : public QScrollArea {
  Q_OBJECT

 public:
  explicit GroupedForm(QWidget* parent = nullptr);

  /// Begins a section: later rows belong to it. An empty title takes no space.
  void addSection(const QString& title);
  /// Adds a labelled control, and takes ownership. Disable a control before adding it: its label is disabled with it.
  QLabel* addRow(const QString& label, QWidget* control);
  /// Adds a widget that takes the whole width.
  void addWideRow(QWidget* content);
  /// Adds a widget at the leading edge.
  void addLeadingRow(QWidget* content);

 protected:
  /// Deletes all sections.
  void clear();
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void add(QWidget* row);

  QVBoxLayout* m_column;
  Card* m_card = nullptr;
};

}  // namespace zolt

#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "controls/BarButton.h"
#include "controls/SecondaryLabel.h"
#include "controls/TextField.h"
#include "find/FindPattern.h"

namespace zolt {

/// The find bar: a field, options and buttons. It only shows state and emits what the user asks for. Main thread.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QWidget* parent);

  QString query() const { return m_query->text(); }
  FindOptions options() const;

  /// The number of the current match, if known, and the number of matches so far.
  struct Progress {
    std::optional<std::uint64_t> current;
    std::uint64_t count = 0;
    bool searching = false;
  };
  void showProgress(const Progress& progress);
  /// Shows why the search cannot run, such as an invalid expression; an empty sentence hides the message.
  void showProblem(const QString& sentence);
  void showNothing();

  /// The edge of the view at which the bar floats, on the right.
  enum class Edge { Top, Bottom };
  /// Moves the bar to that edge of `area`, as wide as it needs and `area` allows.
  void placeIn(const QRect& area, Edge edge);
  /// The bar's geometry if it were at that edge.
  QRect geometryAt(Edge edge) const;
  /// Takes the focus, with the whole field selected; a `query` that is not empty replaces the field's text.
  void takeKeyboard(const QString& query);

 Q_SIGNALS:
  void queryChanged();
  void backwardWanted();
  void forwardWanted();
  void closeWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  BarButton* addOption(const QString& letters, const QString& name);
  /// The width at which nothing has to shrink, with a query field of `field` pixels for the usual text.
  int widthWithField(int field) const;
  void fit();

  TextField* m_query;  // these are children
  SecondaryLabel* m_progress;
  BarButton* m_matchCase;
  BarButton* m_wholeWord;
  BarButton* m_expression;
  QLabel* m_problem;
  QBoxLayout* m_row;  // the field, and the buttons beside or below it
  QRect m_area;
  Edge m_edge = Edge::Top;
};

}  // namespace zolt

#pragma once

#include <QLabel>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "controls/BarButton.h"
#include "controls/SecondaryLabel.h"
#include "controls/TextField.h"
#include "find/FindPattern.h"

namespace zolt {

/// The find bar: a field for the query, its options, and buttons to walk through the matches. It shows what it is given
/// and reports what the user does; it searches nothing itself. Main thread.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QWidget* parent);

  QString query() const { return m_query->text(); }
  FindOptions options() const;

  /// What has been found: the number of the current match, if known, and how many there are.
  struct Progress {
    std::optional<std::uint64_t> current;
    std::uint64_t count = 0;
    bool searching = false;
  };
  void showProgress(const Progress& progress);
  /// Why the query cannot be searched for; empty when it can.
  void showProblem(const QString& sentence);
  void showNothing();

  /// Where the bar lies on the view: at its right, near this edge.
  enum class Edge { Top, Bottom };
  /// Puts the bar at that edge of `area`: as wide as it needs to be, and no wider than fits.
  void placeIn(const QRect& area, Edge edge);
  /// Where the bar would lie at that edge.
  QRect geometryAt(Edge edge) const;
  /// Takes the keyboard, with `query` in the field unless it is empty, all of it selected.
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

 private:
  BarButton* addOption(const QString& letters, const QString& name);
  void fit();

  TextField* m_query;  // these are children
  SecondaryLabel* m_progress;
  BarButton* m_matchCase;
  BarButton* m_wholeWord;
  BarButton* m_expression;
  QLabel* m_problem;
  QRect m_area;
  Edge m_edge = Edge::Top;
};

}  // namespace zolt

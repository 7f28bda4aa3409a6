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

/// The bar in which one types what to find. It shows what it is told and tells what the user wants. Main thread.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QWidget* parent);

  QString query() const { return m_query->text(); }
  FindOptions options() const;

  /// What has been found: the number of the match that one is at, if known, and how many there are.
  struct Progress {
    std::optional<std::uint64_t> current;
    std::uint64_t count = 0;
    bool searching = false;
  };
  void showProgress(const Progress& progress);
  /// Why nothing is sought; empty for nothing to say.
  void showProblem(const QString& sentence);
  void showNothing();

  /// Where on the view the bar lies: at the right, so many pixels from an edge.
  enum class Edge { Top, Bottom };
  /// Puts the bar at that edge of `area`, as wide as it needs and fits.
  void placeIn(const QRect& area, Edge edge);
  /// Where it lies, or would, at that edge.
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

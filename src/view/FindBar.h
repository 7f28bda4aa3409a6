#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "find/FindPattern.h"
#include "settings/views/KeyboardFocus.h"
#include "settings/views/SecondaryLabel.h"
#include "settings/views/TextField.h"

namespace zolt {

/// A small button of a bar: a symbol or a few letters, on a ground that shows where the pointer is and what is on.
class FindBarButton : public QAbstractButton {
  Q_OBJECT

 public:
  /// Shows the symbol `symbolName`, or `letters` where that is empty; `name` is its tooltip and what a screen reader
  /// says.
  FindBarButton(const QString& symbolName, const QString& letters, const QString& name, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QString m_symbol;
  KeyboardFocus m_focus{*this};
};

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
  FindBarButton* addOption(const QString& letters, const QString& name);
  void fit();

  TextField* m_query;  // these are children
  SecondaryLabel* m_progress;
  FindBarButton* m_matchCase;
  FindBarButton* m_wholeWord;
  FindBarButton* m_expression;
  QLabel* m_problem;
  QRect m_area;
  Edge m_edge = Edge::Top;
};

}  // namespace zolt

#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "view/Finder.h"
#include "view/TerminalSurface.h"

namespace zolt {

/// Fills its area with a terminal's display, and finds in its text.
class TerminalContainerView : public QWidget {
  Q_OBJECT

 public:
  /// Makes the display, with its canvas a child of `parent`.
  using MakeSurface = std::function<std::unique_ptr<TerminalSurface>(QWidget* parent)>;

  explicit TerminalContainerView(const MakeSurface& makeSurface, QWidget* parent = nullptr);
  ~TerminalContainerView() override;

  TerminalSurface& surface() { return *m_surface; }

  Q_INVOKABLE void find() { m_finder->open(); }
  Q_INVOKABLE void findNext() { m_finder->next(); }
  Q_INVOKABLE void findPrevious() { m_finder->previous(); }
  Q_INVOKABLE void findSelection() { m_finder->findSelection(); }

 private:
  std::unique_ptr<TerminalSurface> m_surface;
  std::unique_ptr<Finder> m_finder;
};

}  // namespace zolt

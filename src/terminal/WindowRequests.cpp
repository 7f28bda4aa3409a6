#include "terminal/WindowRequests.h"

#include <QScreen>
#include <algorithm>
#include <cmath>

namespace zolt {

namespace {

// Changes the window by as much as the text area shall change, given in device pixels; 0: as it is.
void resizeText(TextCanvas& canvas, int height, int width) {
  QWidget& window = *canvas.window();
  const TerminalSize& now = canvas.gridSize();
  const double scale = canvas.devicePixelRatioF();
  const auto logical = [&](int wanted, int current) {
    return wanted > 0 ? static_cast<int>(std::lround((wanted - current) / scale)) : 0;
  };
  const QSize size = window.size() + QSize(logical(width, now.pixelWidth), logical(height, now.pixelHeight));
  const QSize room = window.screen()->availableGeometry().size();
  window.resize(size.boundedTo(room).expandedTo(window.minimumSizeHint()));
}

}  // namespace

void applyWindowRequest(const vt::WindowRequest& request, TextCanvas& canvas) {
  using Kind = vt::WindowRequest::Kind;
  QWidget& window = *canvas.window();
  const auto setState = [&](Qt::WindowState state, bool on) {
    window.setWindowState(on ? window.windowState() | state : window.windowState() & ~state);
  };
  const bool isFullScreen = window.windowState().testFlag(Qt::WindowFullScreen);
  const CellMetrics& cell = canvas.cellMetrics();
  switch (request.kind) {
    case Kind::Restore:
      return setState(Qt::WindowMinimized, false);
    case Kind::Minimize:
      return setState(Qt::WindowMinimized, true);
    case Kind::MoveTo:
      return window.move(request.first, request.second);
    case Kind::ResizeToPixels:
      return resizeText(canvas, request.first, request.second);
    case Kind::ResizeToCells:
      return resizeText(canvas, (cell.height * std::min(request.first, vt::Screen::maxSide)).toInt(),
                        (cell.width * std::min(request.second, vt::Screen::maxSide)).toInt());
    case Kind::Raise:
      return window.raise();
    case Kind::Lower:
      return window.lower();
    case Kind::LeaveMaximized:
      return setState(Qt::WindowMaximized, false);
    case Kind::Maximize:
      return setState(Qt::WindowMaximized, true);
    case Kind::LeaveFullScreen:
      return setState(Qt::WindowFullScreen, false);
    case Kind::EnterFullScreen:
      return setState(Qt::WindowFullScreen, true);
    case Kind::ToggleFullScreen:
      return setState(Qt::WindowFullScreen, !isFullScreen);
  }
}

}  // namespace zolt

#include "terminal/EmulationInput.h"

#include <QDesktopServices>
#include <QSysInfo>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "terminal/LinkQuestion.h"
#include "terminal/PasteQuestion.h"
#include "terminal/input/DroppedPaths.h"
#include "terminal/input/KeyTranslation.h"
#include "terminal/input/PasteCheck.h"
#include "terminal/links/LinkPolicy.h"

namespace zolt {

namespace {

// Rows that a notch of the wheel moves the cursor in programs that do not track the mouse.
constexpr int kRowsPerNotch = 3;

quint32 placeOnKeyboard(const QKeyEvent& event) {
  // Events that no keyboard made have no place.
  return event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<quint32>(event.key());
}

bool isModifier(int key) {
  constexpr int kModifiers[] = {Qt::Key_Shift,    Qt::Key_Control, Qt::Key_Meta,       Qt::Key_Alt,     Qt::Key_AltGr,
                                Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock, Qt::Key_Super_L, Qt::Key_Super_R,
                                Qt::Key_Hyper_L,  Qt::Key_Hyper_R, Qt::Key_Mode_switch};
  return std::ranges::find(kModifiers, key) != std::end(kModifiers);
}

QString thisHost() {
  return QSysInfo::machineHostName();
}

}  // namespace

EmulationInput::EmulationInput(EmulationSource& source, TextCanvas& canvas, std::function<void(std::string_view)> write)
    : m_source(source), m_canvas(canvas), m_write(std::move(write)) {}

template <typename Visit>
void EmulationInput::eachReceiver(const Visit& visit) {
  visit(*this);
  for (EmulationInput* each : m_followers) {
    visit(*each);
  }
}

// What the user enters belongs at the end of the text.
void EmulationInput::typed(std::string_view bytes) {
  if (bytes.empty()) return;
  m_canvas.scrollToEndOfDocument();
  m_write(bytes);
}

// Shift with the keys that move by pages moves through the history, where there is one.
bool EmulationInput::scrollsView(const QKeyEvent& event) {
  const bool isPlainShift = (event.modifiers() & ~Qt::KeypadModifier) == Qt::ShiftModifier;
  if (!isPlainShift || m_source.screen()->isAlternate) return false;
  const DevicePixels page = m_canvas.pageHeight();
  switch (event.key()) {
    case Qt::Key_PageUp:
      m_canvas.scrollTo(m_canvas.scrollOffset() - page);
      return true;
    case Qt::Key_PageDown:
      m_canvas.scrollTo(m_canvas.scrollOffset() + page);
      return true;
    case Qt::Key_Home:
      m_canvas.scrollTo({});
      return true;
    case Qt::Key_End:
      m_canvas.scrollToEndOfDocument();
      return true;
    default:
      return false;
  }
}

void EmulationInput::send(const QKeyEvent& event, bool repeats) {
  const vt::Modifiers locks = nativeLocks(event);
  const auto key = translateKey(event, {.optionIsMeta = m_settings.optionSendsMeta,
                                        .tellsModifiers = vt::tellsModifiers(modes().keyboard),
                                        .commandIsMeta = m_settings.commandActsAsMeta,
                                        .repeats = repeats,
                                        .capsLock = locks.hasAny(vt::Modifier::CapsLock),
                                        .numLock = locks.hasAny(vt::Modifier::NumLock)});
  if (!key) return;
  const std::string bytes = vt::keyBytes(*key, modes());
  if (key->action == vt::KeyAction::Release) {
    if (!bytes.empty()) m_write(bytes);
  } else {
    typed(bytes);
  }
}

bool EmulationInput::claimsKey(const QKeyEvent& event) const {
  const bool isFunctionKey = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35;
  if (isFunctionKey && !(event.modifiers() & (Qt::ControlModifier | Qt::MetaModifier))) return true;
  // Control with Shift still reaches every command.
  const bool superIsMeta = m_settings.commandActsAsMeta && kKeyboardSystem == KeyboardSystem::Xkb;
  return superIsMeta && event.modifiers().testFlag(Qt::MetaModifier);
}

// No input method takes the letters that a mode is given.
void EmulationInput::setMode(KeyMode* mode) {
  m_mode = mode;
  m_canvas.setAttribute(Qt::WA_InputMethodEnabled, mode == nullptr);
}

void EmulationInput::endMode() {
  if (m_mode != nullptr) m_mode->end();
}

void EmulationInput::interruptMode() {
  if (m_mode != nullptr) m_mode->interrupted();
}

void EmulationInput::keyPressed(const QKeyEvent& event) {
  const quint32 place = placeOnKeyboard(event);
  if (m_mode != nullptr) {
    if (isModifier(event.key())) return;
    const bool repeats = !m_keysOfMode.insert(place).second || event.isAutoRepeat();
    return m_mode->keyPressed(event, repeats);
  }
  if (m_keysOfMode.contains(place)) return;
  if (scrollsView(event)) return;
  if (event.key() == Qt::Key_Insert && event.modifiers() == Qt::ShiftModifier) return m_canvas.pasteSelection();
  const bool repeats = !m_heldKeys.insert(place).second;
  eachReceiver([&](EmulationInput& each) { each.send(event, repeats); });
}

// Of a press that was kept, for a shortcut or the view, the program knows nothing.
void EmulationInput::keyReleased(const QKeyEvent& event) {
  if (!event.isAutoRepeat()) m_keysOfMode.erase(placeOnKeyboard(event));
  if (m_heldKeys.erase(placeOnKeyboard(event)) == 0) return;
  eachReceiver([&event](EmulationInput& each) { each.send(event, false); });
}

void EmulationInput::textCommitted(const QString& text) {
  if (m_mode != nullptr) return interruptMode();
  vt::KeyEvent event;
  event.text = text.toStdString();
  eachReceiver([&event](EmulationInput& each) { each.typed(vt::keyBytes(event, each.modes())); });
}

void EmulationInput::sendPaste(const std::string& text) {
  eachReceiver([&text](EmulationInput& each) { each.typed(vt::pasteBytes(text, each.modes())); });
}

void EmulationInput::textPasted(const QString& text) {
  if (m_mode != nullptr) return interruptMode();
  const std::string bytes = text.toStdString();
  // One program that takes a paste as typed is enough to ask.
  bool areBracketed = true;
  eachReceiver([&areBracketed](EmulationInput& each) { areBracketed = areBracketed && each.modes().bracketedPaste; });
  const PasteCheck check = checkPaste(bytes, areBracketed);
  if (!check.mustAsk || !m_settings.askBeforeRiskyPaste) return sendPaste(bytes);
  askBeforePaste(m_canvas, check, [this, bytes] { sendPaste(bytes); });
}

bool EmulationInput::tracksMouse() const {
  return m_settings.enableMouseReporting && modes().mouse.tracking != vt::MouseTracking::Off;
}

vt::MouseEvent EmulationInput::mouseEvent(Qt::KeyboardModifiers modifiers, const PointerPlace& place) const {
  const TerminalSize& size = m_source.screen()->size;
  vt::MouseEvent mouse;
  mouse.modifiers = translateModifiers(modifiers, kKeyboardSystem);
  mouse.cell = {.row = std::clamp(static_cast<int>(place.row.value), 0, size.rows - 1),
                .column = std::clamp(place.column.value, 0, size.columns - 1)};
  const CellMetrics& cell = m_canvas.cellMetrics();
  mouse.pixel = {.x = std::clamp(place.pixel.x.toInt(), 0, (cell.width * size.columns).toInt() - 1),
                 .y = std::clamp(place.pixel.y.toInt(), 0, (cell.height * size.rows).toInt() - 1)};
  return mouse;
}

void EmulationInput::report(const vt::MouseEvent& mouse) {
  const vt::MouseModes wanted = tracksMouse() ? modes().mouse : vt::MouseModes();
  if (const std::string bytes = m_mouse.report(mouse, wanted); !bytes.empty()) m_write(bytes);
}

bool EmulationInput::pointerUsed(const QMouseEvent& event, const PointerPlace& place) {
  const bool isPress = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
  const bool isRelease = event.type() == QEvent::MouseButtonRelease;
  vt::MouseEvent mouse = mouseEvent(event.modifiers(), place);
  // A release may get lost where a menu or another program has taken the pointer.
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
    if (isRelease || isPress || !(m_heldButtons & ~event.buttons()).testFlag(button)) continue;
    mouse.action = vt::MouseAction::Release;
    mouse.button = translateButton(button);
    report(mouse);
  }
  if (!isRelease && !isPress) m_heldButtons &= event.buttons();
  // The history is the user's, and so is the mouse with Shift. A button that the program has been told of is followed
  // wherever it goes.
  const bool isOnScreen = place.row >= CanvasRow(0) && place.row < CanvasRow(m_source.screenRows());
  const bool isForProgram =
      m_mode == nullptr && tracksMouse() && isOnScreen && !event.modifiers().testFlag(Qt::ShiftModifier);
  if (isPress) interruptMode();
  const bool isFollowed = isRelease ? m_heldButtons.testFlag(event.button()) : !isPress && holdsPointer();
  if (!isFollowed && (!isForProgram || isRelease)) return false;
  mouse.action = isPress ? vt::MouseAction::Press : isRelease ? vt::MouseAction::Release : vt::MouseAction::Motion;
  mouse.button = isPress || isRelease ? translateButton(event.button()) : vt::MouseButton::None;
  m_heldButtons.setFlag(event.button(), isPress);
  report(mouse);
  return true;
}

bool EmulationInput::wheelTurned(const QWheelEvent& event, const PointerPlace& place, double rowHeight) {
  const bool isTracked = tracksMouse();
  const bool isInHistory = place.row < CanvasRow(0);
  if (m_mode != nullptr || isInHistory || (!isTracked && !modes().alternateScroll)) {
    m_wheel.reset();
    return false;
  }
  const double cellWidth = m_canvas.cellMetrics().width.toDouble() / m_canvas.devicePixelRatioF();
  const QSize cell(std::max(1, static_cast<int>(std::lround(cellWidth))),
                   std::max(1, static_cast<int>(std::lround(rowHeight))));
  const QPoint steps = event.pixelDelta().isNull() ? m_wheel.addAngle(event.angleDelta(), isTracked ? 1 : kRowsPerNotch)
                                                   : m_wheel.addPixels(event.pixelDelta(), cell);
  if (!isTracked) {
    typed(vt::wheelBytes(steps.y(), modes()));
    return true;
  }
  vt::MouseEvent mouse = mouseEvent(event.modifiers(), place);
  const auto turn = [&](Qt::Orientation orientation, int count) {
    mouse.button = wheelButton(orientation, count);
    for (int i = std::min(std::abs(count), vt::kMaxScrollSteps); i > 0; --i) {
      if (const std::string bytes = m_mouse.report(mouse, modes().mouse); !bytes.empty()) m_write(bytes);
    }
  };
  turn(Qt::Vertical, steps.y());
  turn(Qt::Horizontal, steps.x());
  return true;
}

void EmulationInput::focusChanged(bool focused) {
  if (!focused) {
    m_heldKeys.clear();
    m_keysOfMode.clear();
  }
  if (const std::string bytes = vt::focusBytes(focused, modes()); !bytes.empty()) m_write(bytes);
}

bool EmulationInput::canDrop(const QMimeData& data) const {
  return droppedText(data, thisHost()).has_value();
}

void EmulationInput::dropped(const QMimeData& data) {
  const auto drop = droppedText(data, thisHost());
  if (!drop) return;
  interruptMode();
  if (drop->route == DroppedText::Route::Pasted) {
    textPasted(QString::fromStdString(drop->text));
  } else {
    sendPaste(drop->text);
  }
  m_canvas.setFocus();
}

QString EmulationInput::shownTarget(const std::string& target) const {
  return QString::fromStdString(displayTarget(target));
}

void EmulationInput::linkOpened(const std::string& target) {
  const auto open = [target] { QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(target))); };
  switch (linkAction(target, thisHost().toStdString())) {
    case LinkAction::Open:
      return open();
    case LinkAction::Ask:
      return askBeforeLink(m_canvas, shownTarget(target), open);
    case LinkAction::Refuse:
      return tellRefusedLink(m_canvas, shownTarget(target));
  }
}

}  // namespace zolt

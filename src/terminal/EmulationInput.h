#pragma once

#include <QObject>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "canvas/CanvasInput.h"
#include "canvas/TextCanvas.h"
#include "settings/EmulationSettings.h"
#include "terminal/EmulationSource.h"
#include "terminal/KeyMode.h"
#include "terminal/input/MouseTranslation.h"
#include "vt/input/Mouse.h"

namespace zolt {

/// Encodes what the user enters for the program, in the modes of the screen that is shown. Main thread.
class EmulationInput : public QObject, public CanvasInput {
  Q_OBJECT

 public:
  /// `write` sends bytes to the program. All must outlive the input.
  EmulationInput(EmulationSource& source, TextCanvas& canvas, std::function<void(std::string_view)> write);

  void setSettings(const EmulationSettings& settings) { m_settings = settings; }
  /// What is typed or pasted here goes to these terminals too, encoded for the modes of each. They must outlive the
  /// input or be replaced before they go.
  void setFollowers(std::vector<EmulationInput*> followers) { m_followers = std::move(followers); }

  /// Keys go to `mode` instead of the program from now on; null: to the program again. It must outlive the input or be
  /// replaced before it goes.
  void setMode(KeyMode* mode);
  /// Ends what has the keyboard instead of the program, if anything.
  void endMode();

  /// Function keys without the Command key are the program's, whatever they do in the window; so are all keys with the
  /// Super key where that is set to act as Meta.
  bool claimsKey(const QKeyEvent& event) const override;
  void keyPressed(const QKeyEvent& event) override;
  void keyReleased(const QKeyEvent& event) override;
  void textCommitted(const QString& text) override;
  void textPasted(const QString& text) override;
  bool pointerUsed(const QMouseEvent& event, const PointerPlace& place) override;
  bool wantsPointer() const override { return m_mode == nullptr && tracksMouse(); }
  bool holdsPointer() const override { return m_heldButtons != Qt::NoButton; }
  bool wheelTurned(const QWheelEvent& event, const PointerPlace& place, double rowHeight) override;
  void focusChanged(bool focused) override;
  bool canDrop(const QMimeData& data) const override;
  void dropped(const QMimeData& data) override;
  QString shownTarget(const std::string& target) const override;
  void linkOpened(const std::string& target) override;

 private:
  void interruptMode();
  const vt::InputModes& modes() const { return m_source.screen()->input; }
  bool tracksMouse() const;
  bool scrollsView(const QKeyEvent& event);
  void send(const QKeyEvent& event, bool repeats);
  void typed(std::string_view bytes);
  void sendPaste(const std::string& text);
  void report(const vt::MouseEvent& mouse);
  vt::MouseEvent mouseEvent(Qt::KeyboardModifiers modifiers, const PointerPlace& place) const;

  /// This one, and those that follow it.
  template <typename Visit>
  void eachReceiver(const Visit& visit);

  EmulationSource& m_source;
  TextCanvas& m_canvas;
  std::vector<EmulationInput*> m_followers;
  std::function<void(std::string_view)> m_write;
  EmulationSettings m_settings;
  vt::MouseReporter m_mouse;
  Qt::MouseButtons m_heldButtons = Qt::NoButton;  // that the program has been told of
  std::set<quint32> m_heldKeys;                   // the same; by their place on the keyboard
  KeyMode* m_mode = nullptr;
  std::set<quint32> m_keysOfMode;  // held since a mode was given them; their repeats are not for the program
  WheelSteps m_wheel;
};

}  // namespace zolt

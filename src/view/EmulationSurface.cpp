#include "view/EmulationSurface.h"

#include <utility>

#include "desktop/SystemScheme.h"
#include "vt/history/ScrollbackStyles.h"

namespace zolt {

EmulationSurface::EmulationSurface(TerminalController& terminal, const TerminalSize& size,
                                   EmulationSettingsStore& settings, QWidget* parent)
    : m_settings(settings), m_scheme(std::make_unique<SystemScheme>()) {
  const EmulationSettings current = settings.current();
  m_display = std::make_unique<EmulationDisplay>(terminal, size, current,
                                                 isDark(current.colorScheme, m_scheme->isDark()), parent);
  m_text = std::make_unique<vt::ScrollbackText>(m_display->source().wholeText());
  connect(&settings, &EmulationSettingsStore::changed, this, &EmulationSurface::applySettings);
  connect(m_scheme.get(), &SystemScheme::changed, this, &EmulationSurface::applySettings);
  connect(m_display.get(), &EmulationDisplay::screenChanged, this, &EmulationSurface::updateText);
}

EmulationSurface::~EmulationSurface() = default;

void EmulationSurface::applySettings() {
  const EmulationSettings current = m_settings.current();
  m_display->setSettings(current, isDark(current.colorScheme, m_scheme->isDark()));
}

void EmulationSurface::followText(bool followed) {
  m_isFollowed = followed;
  updateText();
}

void EmulationSurface::updateText() {
  if (!m_isFollowed) return;
  m_text->show(m_display->source().wholeText());
  Q_EMIT textChanged();
}

TextSnapshot EmulationSurface::excerpt() const {
  const vt::ScrollbackText text(m_display->source().wholeText());
  return text.snapshot(text.firstBlock(), text.endBlock());
}

std::unique_ptr<OutputStyles> EmulationSurface::outputStyles() const {
  return std::make_unique<vt::ScrollbackStyles>();
}

}  // namespace zolt

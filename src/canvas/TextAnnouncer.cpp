#include "canvas/TextAnnouncer.h"

#include <algorithm>
#include <utility>

namespace zolt {

TextAnnouncer::TextAnnouncer(Handlers handlers, Clock& clock)
    : m_handlers(std::move(handlers)), m_clock(clock), m_timer(clock.makeTimer([this] { tell(); })) {}

void TextAnnouncer::start() {
  if (!m_told) m_told = m_handlers.read();
}

void TextAnnouncer::stop() {
  m_told.reset();
  m_timer->stop();
}

void TextAnnouncer::update() {
  if (!m_told || m_timer->isActive()) return;
  const auto wait = std::chrono::duration_cast<std::chrono::microseconds>(m_next - m_clock.now());
  m_timer->start(std::max(wait, std::chrono::microseconds(0)));
}

void TextAnnouncer::tell() {
  const State now = m_handlers.read();
  const State before = std::exchange(*m_told, now);
  const std::vector<TextChange> changes = textChanges(before.rows, now.rows, maxChanges);
  const auto insertions =
      std::ranges::count_if(changes, [](const TextChange& each) { return !each.inserted.isEmpty(); });
  m_next = m_clock.now() + insertions * interval;
  for (const TextChange& change : changes) {
    m_handlers.textChanged(change);
  }
  if (now.caret != before.caret) m_handlers.caretMoved(now.caret);
  if (now.selection != before.selection) m_handlers.selectionChanged(now.selection);
}

}  // namespace zolt

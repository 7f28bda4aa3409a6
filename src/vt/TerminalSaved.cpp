#include "vt/Terminal.h"
#include "vt/saved/SavedFields.h"
#include "vt/saved/SavedReader.h"
#include "vt/saved/SavedWriter.h"

namespace zolt::vt {

namespace {

// Raised by each change of what SavedFields says.
constexpr int kVersion = 1;

Failure damaged(const std::string& what) {
  return {"The saved terminal is damaged: " + what + "."};
}

// Every row and every eight columns take at least a byte, so that few bytes cannot ask for much memory.
bool canHold(std::size_t bytes, const TerminalSize& size) {
  const auto rows = static_cast<std::size_t>(size.rows);
  const auto columns = static_cast<std::size_t>(size.columns);
  return rows <= bytes && columns / 8 <= bytes && rows * columns <= std::size_t{Screen::maxCells};
}

}  // namespace

template <class Archive, class Self>
void Terminal::savedFields(Archive& archive, Self& terminal) {
  // Snapshots are made anew.
  auto& [state, dispatcher, parser, mouse, snapshots] = terminal;
  SavedFields::fields(archive, state);
  SavedFields::fields(archive, parser);
  SavedFields::fields(archive, mouse);
}

std::string Terminal::saved() const {
  SavedWriter writer(m_state.size, m_state.screen.tables());
  writer.number(kVersion, 0, INT32_MAX);
  SavedFields::fields(writer, m_state.size);
  savedFields(writer, *this);
  return writer.take();
}

Result<std::unique_ptr<Terminal>> Terminal::restored(std::string_view bytes, TerminalSettings settings,
                                                     Milliseconds now) {
  SavedReader reader(bytes);
  int version = 0;
  reader.number(version, 0, INT32_MAX);
  if (!reader.error() && version > kVersion) return Failure{"The terminal was saved by a newer version of Zolt."};
  if (!reader.error() && version < kVersion) reader.fail("an unknown version");
  TerminalSize size;
  SavedFields::fields(reader, size);
  if (!reader.error() && !canHold(reader.remaining(), size)) reader.fail("a size that is too large");
  if (reader.error()) return damaged(*reader.error());
  auto terminal = std::make_unique<Terminal>(size, std::move(settings));
  terminal->m_state.now = now;
  reader.setSize(size);
  savedFields(reader, *terminal);
  if (reader.remaining() > 0) reader.fail("more than a terminal");
  if (reader.error()) return damaged(*reader.error());
  return terminal;
}

Result<std::unique_ptr<Terminal>> Terminal::restored(StoredTerminal stored, TerminalSettings settings,
                                                     Milliseconds now) {
  auto terminal = restored(std::string_view(stored.state), std::move(settings), now);
  if (terminal) terminal.value()->m_state.screen.scrollback().adopt(std::move(stored.history));
  return terminal;
}

}  // namespace zolt::vt

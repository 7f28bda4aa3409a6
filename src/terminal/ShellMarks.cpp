#include "terminal/ShellMarks.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zolt {

namespace {

constexpr std::size_t kBlocksLookedAt = 1024;

const std::vector<HistoryMark>& marksOf(const LineBlock& block) {
  return static_cast<const vt::ScrollbackBlock&>(block).content()->marks;
}

ShellMark placed(const LineBlock& block, const HistoryMark& mark) {
  return {.position = block.start() + mark.offset, .kind = mark.kind, .exitStatus = mark.exitStatus};
}

bool isPrompt(HistoryMarkKind kind) {
  return kind == HistoryMarkKind::PromptStart;
}

}  // namespace

template <typename IsWanted>
std::optional<ShellMark> ShellMarks::lastBefore(TextPosition position, const IsWanted& isWanted) const {
  std::size_t index = m_text.blockAt(std::clamp(position, m_text.begin(), m_text.end())) + 1;
  const std::size_t first = std::max(m_text.firstBlock(), index - std::min(index, kBlocksLookedAt));
  while (index-- > first) {
    const auto block = m_text.block(index);
    const std::vector<HistoryMark>& marks = marksOf(*block);
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
      if (isWanted(mark->kind) && block->start() + mark->offset < position) return placed(*block, *mark);
    }
  }
  return std::nullopt;
}

template <typename IsWanted>
std::optional<ShellMark> ShellMarks::firstFrom(TextPosition position, const IsWanted& isWanted) const {
  std::size_t index = m_text.blockAt(std::clamp(position, m_text.begin(), m_text.end()));
  const std::size_t end = std::min(m_text.endBlock(), index + kBlocksLookedAt);
  for (; index < end; ++index) {
    const auto block = m_text.block(index);
    for (const HistoryMark& mark : marksOf(*block)) {
      if (isWanted(mark.kind) && block->start() + mark.offset >= position) return placed(*block, mark);
    }
  }
  return std::nullopt;
}

std::optional<ShellMark> ShellMarks::promptBefore(TextPosition position) const {
  return lastBefore(position, isPrompt);
}

std::optional<ShellMark> ShellMarks::promptAfter(TextPosition position) const {
  return firstFrom(position + 1, isPrompt);
}

std::optional<TextRange> ShellMarks::lastCommand() const {
  const auto output =
      lastBefore(m_text.end() + 1, [](HistoryMarkKind kind) { return kind == HistoryMarkKind::OutputStart; });
  if (!output) return std::nullopt;
  const auto command =
      lastBefore(output->position, [](HistoryMarkKind kind) { return kind == HistoryMarkKind::CommandStart; });
  if (!command) return std::nullopt;
  return TextRange{.begin = command->position, .end = output->position};
}

std::optional<TextRange> ShellMarks::outputAt(TextPosition position) const {
  const auto isOutput = [](HistoryMarkKind kind) { return kind == HistoryMarkKind::OutputStart; };
  const auto isEither = [](HistoryMarkKind kind) {
    return kind == HistoryMarkKind::OutputStart || kind == HistoryMarkKind::PromptStart;
  };
  std::optional<ShellMark> start;
  if (const auto prompt = lastBefore(position + 1, isPrompt)) {
    const auto next = firstFrom(prompt->position + 1, isEither);
    // At a prompt where nothing has been run yet it is the command before.
    start = next && isOutput(next->kind) ? next : lastBefore(prompt->position + 1, isOutput);
  } else {
    start = lastBefore(position + 1, isOutput);
  }
  if (!start) return std::nullopt;
  const auto end = firstFrom(start->position, [](HistoryMarkKind kind) {
    return kind == HistoryMarkKind::CommandEnd || kind == HistoryMarkKind::PromptStart;
  });
  return TextRange{.begin = start->position, .end = end ? end->position : m_text.end()};
}

}  // namespace zolt

#include "vt/ParserTable.h"

namespace zolt::vt {

namespace {

using enum State;

// A set of states.
using States = std::uint32_t;

template <class... Each>
constexpr States in(Each... states) {
  return ((States{1} << static_cast<unsigned>(states)) | ...);
}

constexpr States kEverywhere = (States{1} << kStates) - 1;
constexpr States kInStrings = in(DcsString, OscString, IgnoredString, DcsIgnore);
// Controls take effect within a sequence, but not within what will be a device control string.
constexpr States kInDcsHead = in(DcsEntry, DcsParam, DcsIntermediate);
constexpr States kObeying = kEverywhere & ~kInStrings & ~kInDcsHead;
// What is on its way when a character comes that has no place in it: printed, never lost.
constexpr States kInSequences = kEverywhere & ~kInStrings & ~in(Ground);

// In the states named, characters of the classes `first` to `last` (included); `next` empty: the same state again.
struct Row {
  States states;
  std::size_t first;
  std::size_t last;
  Action action;
  State next;
  bool stays = false;
};

constexpr Row stay(States states, std::size_t first, std::size_t last, Action action) {
  return {states, first, last, action, Ground, true};
}

constexpr Row kRows[] = {
    // C0 controls. CAN and SUB end everything; ESC begins anew.
    stay(kObeying, 0x00, 0x17, Action::Execute),
    stay(kObeying, 0x19, 0x19, Action::Execute),
    stay(kObeying, 0x1C, 0x1F, Action::Execute),
    stay(kInDcsHead, 0x00, 0x17, Action::Ignore),
    stay(kInDcsHead, 0x19, 0x19, Action::Ignore),
    stay(kInDcsHead, 0x1C, 0x1F, Action::Ignore),
    {kEverywhere, 0x18, 0x18, Action::Execute, Ground},
    {kEverywhere, 0x1A, 0x1A, Action::Execute, Ground},
    {kEverywhere & ~kInStrings, 0x1B, 0x1B, Action::Begin, Escape},
    {kInStrings, 0x1B, 0x1B, Action::SuspendString, Escape},
    stay(kEverywhere & ~in(DcsString, OscString, IgnoredString, DcsIgnore), 0x7F, 0x7F, Action::Ignore),

    // C1 controls, which are what they are in any state.
    {kEverywhere, 0x80, 0x8F, Action::Execute, Ground},
    {kEverywhere, 0x90, 0x90, Action::Begin, DcsEntry},
    {kEverywhere, 0x91, 0x97, Action::Execute, Ground},
    {kEverywhere, 0x98, 0x98, Action::Begin, IgnoredString},
    {kEverywhere, 0x99, 0x9A, Action::Execute, Ground},
    {kEverywhere, 0x9B, 0x9B, Action::Begin, CsiEntry},
    {kEverywhere & ~kInStrings, 0x9C, 0x9C, Action::Ignore, Ground},
    {kInStrings, 0x9C, 0x9C, Action::EndString, Ground},
    {kEverywhere, 0x9D, 0x9D, Action::BeginOsc, OscString},
    {kEverywhere, 0x9E, 0x9F, Action::Begin, IgnoredString},

    stay(in(Ground), 0x20, 0x7E, Action::Print),
    stay(in(Ground), 0xA0, 0xA0, Action::Print),
    {kInSequences, 0xA0, 0xA0, Action::Print, Ground},

    {in(Escape), 0x20, 0x2F, Action::Collect, EscapeIntermediate},
    {in(Escape), 0x30, 0x4F, Action::DispatchEscape, Ground},
    {in(Escape), 'P', 'P', Action::Begin, DcsEntry},
    {in(Escape), 'Q', 'W', Action::DispatchEscape, Ground},
    {in(Escape), 'X', 'X', Action::Begin, IgnoredString},
    {in(Escape), 'Y', 'Z', Action::DispatchEscape, Ground},
    {in(Escape), '[', '[', Action::Begin, CsiEntry},
    {in(Escape), '\\', '\\', Action::DispatchEscape, Ground},
    {in(Escape), ']', ']', Action::BeginOsc, OscString},
    {in(Escape), '^', '_', Action::Begin, IgnoredString},
    {in(Escape), '`', 0x7E, Action::DispatchEscape, Ground},
    stay(in(EscapeIntermediate), 0x20, 0x2F, Action::Collect),
    {in(EscapeIntermediate), 0x30, 0x7E, Action::DispatchEscape, Ground},

    {in(CsiEntry, CsiParam), 0x20, 0x2F, Action::Collect, CsiIntermediate},
    {in(CsiEntry, CsiParam), '0', ';', Action::Parameter, CsiParam},
    {in(CsiEntry), '<', '?', Action::Collect, CsiParam},
    {in(CsiParam), '<', '?', Action::Ignore, CsiIgnore},
    stay(in(CsiIntermediate), 0x20, 0x2F, Action::Collect),
    {in(CsiIntermediate), 0x30, 0x3F, Action::Ignore, CsiIgnore},
    stay(in(CsiIgnore), 0x20, 0x3F, Action::Ignore),
    {in(CsiEntry, CsiParam, CsiIntermediate), 0x40, 0x7E, Action::DispatchCsi, Ground},
    {in(CsiIgnore), 0x40, 0x7E, Action::Ignore, Ground},

    {in(DcsEntry, DcsParam), 0x20, 0x2F, Action::Collect, DcsIntermediate},
    {in(DcsEntry, DcsParam), '0', ';', Action::Parameter, DcsParam},
    {in(DcsEntry), '<', '?', Action::Collect, DcsParam},
    {in(DcsParam), '<', '?', Action::Ignore, DcsIgnore},
    stay(in(DcsIntermediate), 0x20, 0x2F, Action::Collect),
    {in(DcsIntermediate), 0x30, 0x3F, Action::Ignore, DcsIgnore},
    {in(DcsEntry, DcsParam, DcsIntermediate), 0x40, 0x7E, Action::BeginDcs, DcsString},

    // BEL ends an operating system command, as xterm has it; in other strings it is a character like any other.
    {in(OscString), 0x07, 0x07, Action::EndString, Ground},
    stay(in(OscString), 0x00, 0x06, Action::Ignore),
    stay(in(OscString), 0x08, 0x17, Action::Ignore),
    stay(in(OscString), 0x19, 0x19, Action::Ignore),
    stay(in(OscString), 0x1C, 0x1F, Action::Ignore),
    stay(in(OscString), 0x20, 0x7F, Action::Put),
    stay(in(OscString, DcsString), 0xA0, 0xA0, Action::Put),
    stay(in(DcsString), 0x00, 0x17, Action::Put),
    stay(in(DcsString), 0x19, 0x19, Action::Put),
    stay(in(DcsString), 0x1C, 0x7E, Action::Put),
    stay(in(DcsString), 0x7F, 0x7F, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore), 0x00, 0x17, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore), 0x19, 0x19, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore), 0x1C, 0x7F, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore), 0xA0, 0xA0, Action::Ignore),
};

// Runs in the compiler: to throw is an error there, with the text in it.
consteval TransitionTable makeTable() {
  TransitionTable table{};
  std::array<std::array<bool, kCharacterClasses>, kStates> filled{};
  for (const Row& row : kRows) {
    for (std::size_t state = 0; state < kStates; ++state) {
      if ((row.states >> state & 1) == 0) continue;
      for (std::size_t character = row.first; character <= row.last; ++character) {
        if (filled[state][character]) throw "two rows for one character";
        filled[state][character] = true;
        table[state][character] = {row.action, row.stays ? static_cast<State>(state) : row.next};
      }
    }
  }
  for (const auto& characters : filled) {
    for (const bool one : characters) {
      if (!one) throw "no row for a character";
    }
  }
  return table;
}

}  // namespace

constinit const TransitionTable kTransitions = makeTable();

}  // namespace zolt::vt

#include "vt/parser/ParserTable.h"

namespace zolt::vt {

namespace {

using enum ParserState;

// A set of states.
using States = std::uint32_t;

template <class... Each>
constexpr States in(Each... states) {
  return ((States{1} << static_cast<unsigned>(states)) | ...);
}

constexpr States kEverywhere = (States{1} << kStates) - 1;
constexpr States kInStrings = in(DcsString, OscString, IgnoredString, DcsIgnore);
// Controls take effect inside a sequence, but not inside the head of a device control string.
constexpr States kInDcsHead = in(DcsEntry, DcsParam, DcsIntermediate);
constexpr States kExecuting = kEverywhere & ~kInStrings & ~kInDcsHead;
// States that a printable character beyond ASCII aborts; it is printed, not lost.
constexpr States kInSequences = kEverywhere & ~kInStrings & ~in(Ground);

// A transition from each of `states`, on character classes `first` to `last` (inclusive).
struct Row {
  States states;
  std::size_t first;
  std::size_t last;
  Action action;
  ParserState next;
  bool stays = false;
};

constexpr Row go(States states, std::size_t first, std::size_t last, Action action, ParserState next) {
  return {states, first, last, action, next, false};
}

constexpr Row stay(States states, std::size_t first, std::size_t last, Action action) {
  return {states, first, last, action, Ground, true};
}

// clang-format off
constexpr Row kRows[] = {
    // C0 controls. CAN and SUB cancel everything; ESC starts a new sequence.
    stay(kExecuting,                              0x00, 0x17, Action::Execute),
    stay(kExecuting,                              0x19, 0x19, Action::Execute),
    stay(kExecuting,                              0x1C, 0x1F, Action::Execute),
    stay(kInDcsHead,                              0x00, 0x17, Action::Ignore),
    stay(kInDcsHead,                              0x19, 0x19, Action::Ignore),
    stay(kInDcsHead,                              0x1C, 0x1F, Action::Ignore),
    go(  kEverywhere,                             0x18, 0x18, Action::Execute,        Ground),
    go(  kEverywhere,                             0x1A, 0x1A, Action::Execute,        Ground),
    go(  kEverywhere & ~kInStrings,               0x1B, 0x1B, Action::Begin,          Escape),
    go(  kInStrings,                              0x1B, 0x1B, Action::SuspendString,  Escape),
    stay(kEverywhere & ~kInStrings,               0x7F, 0x7F, Action::Ignore),

    // C1 controls act in any state.
    go(  kEverywhere,                             0x80, 0x8F, Action::Execute,        Ground),
    go(  kEverywhere,                             0x90, 0x90, Action::Begin,          DcsEntry),
    go(  kEverywhere,                             0x91, 0x97, Action::Execute,        Ground),
    go(  kEverywhere,                             0x98, 0x98, Action::Begin,          IgnoredString),
    go(  kEverywhere,                             0x99, 0x9A, Action::Execute,        Ground),
    go(  kEverywhere,                             0x9B, 0x9B, Action::Begin,          CsiEntry),
    go(  kEverywhere & ~kInStrings,               0x9C, 0x9C, Action::Ignore,         Ground),
    go(  kInStrings,                              0x9C, 0x9C, Action::EndString,      Ground),
    go(  kEverywhere,                             0x9D, 0x9D, Action::BeginOsc,       OscString),
    go(  kEverywhere,                             0x9E, 0x9F, Action::Begin,          IgnoredString),

    stay(in(Ground),                              0x20, 0x7E, Action::Print),
    stay(in(Ground),                              0xA0, 0xA0, Action::Print),
    go(  kInSequences,                            0xA0, 0xA0, Action::Print,          Ground),

    go(  in(Escape),                              0x20, 0x2F, Action::Collect,        EscapeIntermediate),
    go(  in(Escape),                              0x30, 0x4F, Action::DispatchEscape, Ground),
    go(  in(Escape),                              'P',  'P',  Action::Begin,          DcsEntry),
    go(  in(Escape),                              'Q',  'W',  Action::DispatchEscape, Ground),
    go(  in(Escape),                              'X',  'X',  Action::Begin,          IgnoredString),
    go(  in(Escape),                              'Y',  'Z',  Action::DispatchEscape, Ground),
    go(  in(Escape),                              '[',  '[',  Action::Begin,          CsiEntry),
    go(  in(Escape),                              '\\', '\\', Action::DispatchEscape, Ground),
    go(  in(Escape),                              ']',  ']',  Action::BeginOsc,       OscString),
    go(  in(Escape),                              '^',  '_',  Action::Begin,          IgnoredString),
    go(  in(Escape),                              '`',  0x7E, Action::DispatchEscape, Ground),
    stay(in(EscapeIntermediate),                  0x20, 0x2F, Action::Collect),
    go(  in(EscapeIntermediate),                  0x30, 0x7E, Action::DispatchEscape, Ground),

    go(  in(CsiEntry, CsiParam),                  0x20, 0x2F, Action::Collect,        CsiIntermediate),
    go(  in(CsiEntry, CsiParam),                  '0',  ';',  Action::Parameter,      CsiParam),
    go(  in(CsiEntry),                            '<',  '?',  Action::Collect,        CsiParam),
    go(  in(CsiParam),                            '<',  '?',  Action::Ignore,         CsiIgnore),
    stay(in(CsiIntermediate),                     0x20, 0x2F, Action::Collect),
    go(  in(CsiIntermediate),                     0x30, 0x3F, Action::Ignore,         CsiIgnore),
    stay(in(CsiIgnore),                           0x20, 0x3F, Action::Ignore),
    go(  in(CsiEntry, CsiParam, CsiIntermediate), 0x40, 0x7E, Action::DispatchCsi,    Ground),
    go(  in(CsiIgnore),                           0x40, 0x7E, Action::Ignore,         Ground),

    go(  in(DcsEntry, DcsParam),                  0x20, 0x2F, Action::Collect,        DcsIntermediate),
    go(  in(DcsEntry, DcsParam),                  '0',  ';',  Action::Parameter,      DcsParam),
    go(  in(DcsEntry),                            '<',  '?',  Action::Collect,        DcsParam),
    go(  in(DcsParam),                            '<',  '?',  Action::Ignore,         DcsIgnore),
    stay(in(DcsIntermediate),                     0x20, 0x2F, Action::Collect),
    go(  in(DcsIntermediate),                     0x30, 0x3F, Action::Ignore,         DcsIgnore),
    go(  in(DcsEntry, DcsParam, DcsIntermediate), 0x40, 0x7E, Action::BeginDcs,       DcsString),

    // As in xterm, BEL terminates an operating system command. In other strings it is an ordinary character.
    go(  in(OscString),                           0x07, 0x07, Action::EndString,      Ground),
    stay(in(OscString),                           0x00, 0x06, Action::Ignore),
    stay(in(OscString),                           0x08, 0x17, Action::Ignore),
    stay(in(OscString),                           0x19, 0x19, Action::Ignore),
    stay(in(OscString),                           0x1C, 0x1F, Action::Ignore),
    stay(in(OscString),                           0x20, 0x7F, Action::Put),
    stay(in(OscString, DcsString),                0xA0, 0xA0, Action::Put),
    stay(in(DcsString),                           0x00, 0x17, Action::Put),
    stay(in(DcsString),                           0x19, 0x19, Action::Put),
    stay(in(DcsString),                           0x1C, 0x7E, Action::Put),
    stay(in(DcsString),                           0x7F, 0x7F, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore),            0x00, 0x17, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore),            0x19, 0x19, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore),            0x1C, 0x7F, Action::Ignore),
    stay(in(IgnoredString, DcsIgnore),            0xA0, 0xA0, Action::Ignore),
};
// clang-format on

// Evaluated at compile time, where a throw is an error that shows the text.
consteval TransitionTable makeTable() {
  TransitionTable table{};
  std::array<std::array<bool, kCharacterClasses>, kStates> filled{};
  for (const Row& row : kRows) {
    for (std::size_t state = 0; state < kStates; ++state) {
      if ((row.states >> state & 1) == 0) continue;
      for (std::size_t character = row.first; character <= row.last; ++character) {
        if (filled[state][character]) throw "two rows for one character class";
        filled[state][character] = true;
        table[state][character] = {row.action, row.stays ? static_cast<ParserState>(state) : row.next};
      }
    }
  }
  for (const auto& characters : filled) {
    for (const bool one : characters) {
      if (!one) throw "no row for a character class";
    }
  }
  return table;
}

}  // namespace

constinit const TransitionTable kTransitions = makeTable();

}  // namespace zolt::vt

#pragma once

#include <initializer_list>
#include <span>
#include <variant>

#include "messages/Message.h"

namespace zolt {

/// A verb as scripts and the wire know it.
struct VerbRow {
  Verb verb;
  const char* name;
  const char* argument;  ///< what follows the options; empty: nothing
  const char* help;
};
std::span<const VerbRow> verbRows();
/// Null if there is no such verb.
const VerbRow* verbNamed(std::string_view name);
const VerbRow& rowOf(Verb verb);

/// A set of verbs.
class Verbs {
 public:
  constexpr Verbs(std::initializer_list<Verb> verbs) {
    for (const Verb verb : verbs)
      m_bits |= 1U << static_cast<unsigned>(verb);
  }
  constexpr bool contains(Verb verb) const { return (m_bits >> static_cast<unsigned>(verb) & 1U) != 0; }

 private:
  unsigned m_bits = 0;
};

/// A field of a message: its key on the wire, the option that sets it, and the verbs that may have it.
struct FieldRow {
  using Member = std::variant<std::string Message::*, std::vector<std::string> Message::*>;

  const char* key;
  Member member;
  Verbs verbs;
  const char* option;  ///< null: none
  const char* value;   ///< the option's, in the help
  const char* help;
};
std::span<const FieldRow> fieldRows();

}  // namespace zolt

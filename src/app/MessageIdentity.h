#pragma once

#include <QObject>
#include <string>

namespace zolt {

/// The variable in which a shell of the full emulation finds the ID of its terminal.
inline constexpr const char* kTerminalVariable = "ZOLT_TERMINAL";

/// What messages know a terminal or a window by. A child of its controller or window, for as long as that lives. Main
/// thread.
class MessageIdentity : public QObject {
  Q_OBJECT

 public:
  /// A new ID, that no other process's terminal has either: 16 hexadecimal digits.
  static std::string newId();
  /// Gives a terminal or window its ID, before anybody asks for one.
  static void give(QObject& owner, const std::string& id);
  /// The identity of a terminal or window, which has a new ID if it was given none.
  static MessageIdentity& of(QObject& owner);

  const std::string& id() const { return m_id; }
  /// Makes the token that allows its holder to type into the terminal.
  const std::string& makeToken();
  /// Whether there is a token, and it is this one.
  bool hasToken(const std::string& token) const { return !m_token.empty() && token == m_token; }

 private:
  MessageIdentity(QObject& owner, std::string id);

  std::string m_id;
  std::string m_token;
};

}  // namespace zolt

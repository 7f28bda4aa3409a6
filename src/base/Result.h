#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace zolt {

/// Why something did not work, as a text for people ("No such file or directory").
struct Failure {
  std::string reason;
};

/// A value, or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : m_content(std::move(value)) {}
  Result(Failure failure) : m_content(std::move(failure)) {}

  explicit operator bool() const { return std::holds_alternative<T>(m_content); }

  /// The value; only when there is one.
  T& value() { return std::get<T>(m_content); }
  const T& value() const { return std::get<T>(m_content); }

  /// The reason; only when there is no value.
  const std::string& reason() const { return std::get<Failure>(m_content).reason; }

 private:
  std::variant<T, Failure> m_content;
};

/// Success without a value, or the reason of the failure.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Failure failure) : m_failure(std::move(failure)) {}

  explicit operator bool() const { return !m_failure.has_value(); }
  const std::string& reason() const { return m_failure->reason; }

 private:
  std::optional<Failure> m_failure;
};

}  // namespace zolt
